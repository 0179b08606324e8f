#ifndef KELD_TRANSL_PROCESS_CLIENT_IN_H
#define KELD_TRANSL_PROCESS_CLIENT_IN_H

#include <keld-transl/process/client.h>

namespace transl_tk {

/// Brings a CAD file into the host: a translator reads it, the model arrives in a new sub-pool
/// named after the file, and `transferModel` takes it over.
class KELD_TRANSL_EXPORT ClientIn : public Client
{
protected:
    ClientIn();
    ClientIn & operator=(ClientIn const &) = default;

public:
    ClientIn(ClientIn const &) = default;
    ~ClientIn() override;

    /// One whole import of `fileName` through the translator of type `serverType`. True when it
    /// completed or was cancelled. After a failure, what the translator could still read stands in
    /// the pool, if anything. The host ends the pool with `Pool::destruct`.
    bool read(std::string const & fileName, unsigned int const & serverType);

    std::string getMode() override;
    bool onSuccess(char * buffer, int & position, bool const & hasPayload,
                   int & messageId) override;
    bool onFilePathNameOk(char * buffer, int & position, bool const & hasPayload,
                          int & messageId) override;
    bool onExit(char * buffer, int & position, bool const & hasPayload, int & messageId) override;

    /// Takes the model over from the current sub-pool. Called at the end of a run that completed,
    /// also when no model came and there is no pool.
    virtual void transferModel() = 0;

    /// The translator was told to produce the model.
    virtual void importStarted() = 0;

    /// The translator takes the file; false cancels the import.
    virtual bool confirmImport() = 0;
};

} // namespace transl_tk

#endif
