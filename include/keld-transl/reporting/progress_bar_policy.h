#ifndef KELD_TRANSL_REPORTING_PROGRESS_BAR_POLICY_H
#define KELD_TRANSL_REPORTING_PROGRESS_BAR_POLICY_H

#include <keld-transl/export.h>

namespace cad {

/// A progress display, for hosts and translators; the toolkit itself never calls it.
class KELD_TRANSL_EXPORT IProgressBarPolicy
{
protected:
    IProgressBarPolicy() = default;

public:
    IProgressBarPolicy(IProgressBarPolicy const &) = default;
    IProgressBarPolicy & operator=(IProgressBarPolicy const &) = default;

    virtual void progress() = 0;
    virtual void reset(int const & total) = 0;
    virtual void updateProgress(int const & value) = 0;
    virtual void incrementBuffer(int const & amount) = 0;
    virtual ~IProgressBarPolicy();
};

/// A display that shows nothing.
class KELD_TRANSL_EXPORT ProgressBarInactive : public IProgressBarPolicy
{
public:
    ProgressBarInactive() = default;
    ~ProgressBarInactive() override;

    void progress() override;
    void reset(int const & total) override;
    void updateProgress(int const & value) override;
    void incrementBuffer(int const & amount) override;
};

} // namespace cad

#endif
