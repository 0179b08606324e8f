#ifndef KELD_TESTS_STEP_SENT_MODEL_H
#define KELD_TESTS_STEP_SENT_MODEL_H

#include <functional>
#include <map>
#include <string>

namespace tests {

/// A model that went through the whole system into a file: this process, the host, had it, and a
/// translator process wrote it.
class SentModel
{
public:
    /// Options are numbers, "true", or other texts. `fill` makes the model, or makes one that is
    /// there already the current one; that one is gone afterwards. `command` is the translator, the
    /// usual one if empty.
    SentModel(std::string const & path, std::function<void()> const & fill,
              std::map<std::string, std::string> const & options = {},
              std::string const & command = {});

    unsigned int status() const { return m_Status; }
    /// What the translator said on standard error.
    std::string const & log() const { return m_Log; }

private:
    unsigned int m_Status = 0;
    std::string m_Log;
};

/// Imports the file `from` and exports its model to `to`.
SentModel passOn(std::string const & from, std::string const & to,
                 std::map<std::string, std::string> const & options = {});

} // namespace tests

#endif
