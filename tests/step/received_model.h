#ifndef KELD_TESTS_STEP_RECEIVED_MODEL_H
#define KELD_TESTS_STEP_RECEIVED_MODEL_H

#include "step/kernel_reading.h"

#include <keld-transl/model/sub_pool.h>

#include <map>
#include <string>
#include <vector>

namespace transl_tk {
class Attribute;
}

namespace tests {

/// Name and values of an attribute.
std::string wordsOf(transl_tk::Attribute const & attribute);

/// A file that came through the whole system: a translator process read it, and this process, the
/// host, received the model. The model is the current sub-pool until this goes.
class ReceivedModel
{
public:
    /// Options are numbers.
    explicit ReceivedModel(std::string const & path,
                           std::map<std::string, double> const & options = {});
    ReceivedModel(ReceivedModel const &) = delete;
    ReceivedModel & operator=(ReceivedModel const &) = delete;
    ~ReceivedModel();

    unsigned int status() const { return m_Status; }
    transl_tk::SubPool & model() const;
    /// All of the log, a line each.
    std::string log() const;
    /// Texts of the report entries of a type.
    std::vector<std::string> entries(int type) const;

    Counts counts() const;
    /// Names as the file has them.
    std::multiset<std::string> productNames() const;
    /// Texts and numbers of the attributes of a number by their names, as words.
    std::multiset<std::string> attributes(int number) const;

    /// The whole model as a shape of the kernel, each part at each of its places. What could not be
    /// made goes into `faults`.
    TopoDS_Shape rebuilt(std::vector<std::string> & faults) const;

private:
    unsigned int m_Status = 0;
};

} // namespace tests

#endif
