#ifndef KELD_TRANSL_PROCESS_CLIENT_H
#define KELD_TRANSL_PROCESS_CLIENT_H

#include <keld-transl/process/exec_io.h>
#include <keld-transl/process/exit_status.h>

#include <memory>
#include <string>
#include <unordered_map>

namespace transl_tk {

/// The host's half of a translator run: starts the translator, names the file, and answers its
/// frames until it is done. A host derives from `ClientIn` or `ClientOut`.
///
/// Everything runs on the calling thread, the host's own operations included. Copies share their
/// options.
class KELD_TRANSL_EXPORT Client
{
public:
    /// Answers one frame: its bytes, the position of its values, whether it has any, its key, and
    /// the client.
    using Handler = bool (*)(char * buffer, int & position, bool const & hasPayload,
                             int & messageId, void * context);

protected:
    Client();
    Client(Client const &);
    Client & operator=(Client const &);

public:
    virtual std::string toolkitTitle();
    virtual ~Client();

    /// Name of the segment that carries the model; empty for none. Asked more than once in a run:
    /// the answer must stay the same.
    virtual std::string getSharedMemName() = 0;

    /// "import" or "export".
    virtual std::string getMode() = 0;

    /// Progress of the run in percent.
    virtual void setProgress(int const & percent) = 0;

    /// A number that the translator sent, without a meaning to the toolkit.
    virtual void setStatus(int const & value) = 0;

    /// Command line of the translator, empty when there is none. `ExecPaths` works it out.
    virtual std::string getExecCmd() = 0;

    /// Library search path of the translator, empty for none.
    virtual std::string getLibPath() = 0;

    /// Puts the options of this run into `getExecIO()`.
    virtual void fillOptions() = 0;

    /// Answer the translator's frames. They take their values from `buffer + position`.
    virtual bool onSuccess(char * buffer, int & position, bool const & hasPayload,
                           int & messageId) = 0;
    virtual bool onFilePathNameOk(char * buffer, int & position, bool const & hasPayload,
                                  int & messageId) = 0;
    virtual bool onExit(char * buffer, int & position, bool const & hasPayload, int & messageId);
    virtual bool onProgress(char * buffer, int & position, bool const & hasPayload,
                            int & messageId);
    virtual bool onStatus(char * buffer, int & position, bool const & hasPayload, int & messageId);

    /// Starts the translator, or joins one that another client holds open.
    void initServer(unsigned int const & serverType);

    /// Leaves the translator; the last client ends it. Frees the options of this run.
    void finiServer();

    /// Hands a frame to the handler of its key; `context` is the client. A key without a handler is
    /// passed over. Returns true.
    static bool wait(char * buffer, int & position, bool const & hasPayload, int & messageId,
                     void * context);

    /// How the run ended, an `ExitStatus`: 8 completed, 9 cancelled, any other number failed.
    unsigned int serverExitStatus() const;
    void setServerExitStatus(unsigned int const & status);

    /// The exit status in words.
    std::string serverExitStatusMsg() const;

    /// The options of this run; they stay owned by the client.
    IExecIO * getExecIO() const;

    std::string getFileName() const;
    void setFileName(std::string const & fileName);

    /// Clients in this process that hold the translator open.
    static int m_RefCounter;

protected:
    /// Sends the command that names the file, and waits for the end of the conversation. Nothing
    /// happens without a file name.
    void run();

    unsigned int m_ServerExitStatus;
    std::string m_ToolkitTitle;
    std::unordered_map<int, Handler> m_Handlers;
    std::string m_FileName;

private:
    static bool onExitMsg(char * buffer, int & position, bool const & hasPayload, int & messageId,
                          void * context);
    static bool onSuccessMsg(char * buffer, int & position, bool const & hasPayload,
                             int & messageId, void * context);
    static bool onFilePathNameOkMsg(char * buffer, int & position, bool const & hasPayload,
                                    int & messageId, void * context);
    static bool onProgressMsg(char * buffer, int & position, bool const & hasPayload,
                              int & messageId, void * context);
    static bool onStatusMsg(char * buffer, int & position, bool const & hasPayload, int & messageId,
                            void * context);

    std::string m_Reserved; ///< kept and copied, read by nothing
    std::shared_ptr<IExecIO> m_ExecIO;
};

} // namespace transl_tk

#endif
