#include <keld-transl/reporting/progress_bar_policy.h>

namespace cad {

IProgressBarPolicy::~IProgressBarPolicy() = default;

ProgressBarInactive::~ProgressBarInactive() = default;

void ProgressBarInactive::progress() {}

void ProgressBarInactive::reset(int const &) {}

void ProgressBarInactive::updateProgress(int const &) {}

void ProgressBarInactive::incrementBuffer(int const &) {}

} // namespace cad
