#ifndef KELD_TESTS_UNIT_ATTRIBUTES_WALKS_H
#define KELD_TESTS_UNIT_ATTRIBUTES_WALKS_H

#include <keld-transl/attributes/value.h>
#include <keld-transl/model/base.h>

#include <string>
#include <utility>
#include <vector>

namespace tests {

/// What a walk of `holder` yields: `walked<Node>(*branch, &Branch::forEachNode)`.
template <class Element, class Holder>
std::vector<Element *> walked(Holder & holder,
                              bool (Holder::*walk)(bool (*)(Element *, void *), void *))
{
    std::vector<Element *> found;
    auto const note = [](Element * element, void * user) {
        static_cast<std::vector<Element *> *>(user)->push_back(element);
        return true;
    };
    if (!(holder.*walk)(note, &found))
        found.push_back(nullptr); // no walk yields that
    return found;
}

/// How many elements a walk reaches that is told to stop at the `last` one, and what it answers.
template <class Element, class Holder>
std::pair<int, bool> stoppedAt(int last, Holder & holder,
                               bool (Holder::*walk)(bool (*)(Element *, void *), void *))
{
    std::pair<int, int> counts(0, last);
    auto const count = [](Element *, void * user) {
        auto & [reached, stop] = *static_cast<std::pair<int, int> *>(user);
        return ++reached != stop;
    };
    bool const answer = (holder.*walk)(count, &counts);
    return {counts.first, answer};
}

template <class T> T contentOf(transl_tk::IValue & value)
{
    T content{};
    value.getValue(content);
    return content;
}

} // namespace tests

#endif
