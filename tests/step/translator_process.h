#ifndef KELD_TESTS_STEP_TRANSLATOR_PROCESS_H
#define KELD_TESTS_STEP_TRANSLATOR_PROCESS_H

#include <string>
#include <sys/types.h>
#include <vector>

namespace tests {

/// The translator, with the test as its host, frame by frame. It is gone when this goes.
class TranslatorProcess
{
public:
    TranslatorProcess();
    TranslatorProcess(TranslatorProcess const &) = delete;
    TranslatorProcess & operator=(TranslatorProcess const &) = delete;
    ~TranslatorProcess();

    /// Has it read a file into a segment.
    void read(std::string const & path, std::string const & segment);

    /// Tells it what a host says once it has the model, and to quit.
    void finish();

    /// Closes the host's end of the commands, as a host does that stops.
    void hangUp();

    struct Frame
    {
        char key = 0; ///< 0 at the end of all frames
        int value = 0;
    };
    Frame receive();

    /// All frames to the end.
    std::vector<Frame> receiveRest();

    /// Waits for its end. The exit code, or minus the number of the signal that ended it.
    int wait();

private:
    void send(std::string const & command) const;

    int m_Commands = -1;
    int m_Frames = -1;
    pid_t m_Process = 0;
};

} // namespace tests

#endif
