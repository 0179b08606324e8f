#include "import/occurrences.h"

#include "import/label_facts.h"

#include <keld-transl/product/instance.h>

#include <TDF_Attribute.hxx>
#include <TDF_AttributeSequence.hxx>
#include <TDF_LabelSequence.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <algorithm>
#include <vector>

namespace step {

namespace {

using transl_tk::HtmlLoggerEntry;

/// Usages, from that which stands on top to that which has the colour. Each is a label below its
/// place.
using Path = std::vector<TDF_Label>;

/// All paths that begin with `top`.
std::vector<Path> pathsFrom(TDF_Label const & top)
{
    std::vector<Path> complete;
    std::vector<Path> open = {{top}};
    while (!open.empty()) {
        Path const path = std::move(open.back());
        open.pop_back();
        TDF_LabelSequence next;
        XCAFDoc_ShapeTool::GetSHUONextUsage(path.back(), next);
        bool isEnd = true;
        for (TDF_Label const & usage : next) {
            if (std::find(path.begin(), path.end(), usage) != path.end())
                continue;
            isEnd = false;
            open.push_back(path);
            open.back().push_back(usage);
        }
        if (isEnd)
            complete.push_back(path);
    }
    return complete;
}

/// The instances of a path; fewer than it has usages where one of them is not in the model.
std::vector<transl_tk::Instance *> instancesOf(Path const & path,
                                               InstancesByPlace const & instances)
{
    std::vector<transl_tk::Instance *> result;
    for (TDF_Label const & usage : path) {
        if (auto * const * const instance = instances.Seek(usage.Father()))
            result.push_back(*instance);
    }
    return result;
}

} // namespace

void addOccurrenceColours(InstancesByPlace const & instances, AttributeBook & attributes,
                          Coverage & coverage)
{
    for (InstancesByPlace::Iterator place(instances); place.More(); place.Next()) {
        TDF_AttributeSequence usages;
        XCAFDoc_ShapeTool::GetAllComponentSHUO(place.Key(), usages);
        for (Handle(TDF_Attribute) const & usage : usages) {
            auto const colours = coloursOf(usage->Label());
            if (colours.empty())
                continue;
            for (Path const & path : pathsFrom(usage->Label())) {
                auto const way = instancesOf(path, instances);
                for (auto const & [name, colour] : colours) {
                    if (way.size() < path.size()) {
                        coverage.lost(HtmlLoggerEntry::Attributes, "",
                                      "the colour of an occurrence below " + nameOf(place.Key()) +
                                          " that is not in the file");
                        continue;
                    }
                    std::vector<int> ids;
                    ids.reserve(way.size());
                    for (auto const * const instance : way)
                        ids.push_back(instance->getId());
                    attributes.addOccurrence(way.back(), name, colour, ids);
                    coverage.exact(HtmlLoggerEntry::Attributes);
                }
            }
        }
    }
}

} // namespace step
