#ifndef KELD_TRANSL_PROCESS_CLIENT_OUT_H
#define KELD_TRANSL_PROCESS_CLIENT_OUT_H

#include <keld-transl/process/client.h>
#include <keld-transl/process/export_options.h>

namespace transl_tk {

/// Takes a model out of the host: `transferModel` fills a new sub-pool, and a translator writes the
/// file from it.
class KELD_TRANSL_EXPORT ClientOut : public Client
{
protected:
    ClientOut();
    ClientOut & operator=(ClientOut const &) = default;

public:
    ClientOut(ClientOut const &) = default;
    ~ClientOut() override;

    /// One whole export to `fileName` through the translator of type `serverType`;
    /// `serverExitStatus` tells how it ended. A second export on one object starts from the status
    /// that the first one left.
    void write(std::string const & fileName, unsigned int const & serverType);

    /// The options of this client, for reading and changing.
    ExportOptions & getOptions();

    std::string getMode() override;
    bool onSuccess(char * buffer, int & position, bool const & hasPayload,
                   int & messageId) override;
    bool onFilePathNameOk(char * buffer, int & position, bool const & hasPayload,
                          int & messageId) override;

    /// Fills the current sub-pool, which is new and empty, with the model.
    virtual void transferModel() = 0;

private:
    ExportOptions m_Options;
};

} // namespace transl_tk

#endif
