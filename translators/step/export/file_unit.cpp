#include "export/file_unit.h"

#include <keld-transl/product/component.h>
#include <keld-transl/product/instance.h>
#include <keld-translator-kit/run.h>

#include <map>

namespace step {

namespace {

using transl_tk::Component;
using transl_tk::Hierarchy;
using transl_tk::Instance;
using transl_tk::Units;

constexpr FileUnit Millimetre = {"MM", 1};

/// The first component that no instance places, or that an instance on top places.
Component * topComponent()
{
    std::vector<Hierarchy *> tops;
    Hierarchy::gatherTopLevelHierarchies(tops);
    for (Hierarchy * const top : tops) {
        if (top->getHierarchyType() == Hierarchy::Instance)
            return static_cast<Instance *>(top)->getComponent();
        auto * const component = static_cast<Component *>(top);
        if (component->forEachInstance([](Instance *, void *) { return false; }, nullptr))
            return component;
    }
    return nullptr;
}

} // namespace

FileUnit fileUnitOf(translator_kit::Run & run)
{
    static std::map<int, FileUnit> const Known = {
        {Units::Millimetre, Millimetre},   {Units::Metre, {"M", 1000}},
        {Units::Inch, {"INCH", 25.4}},     {Units::Foot, {"FT", 304.8}},
        {Units::Mile, {"MI", 1609344}},    {Units::Kilometre, {"KM", 1e6}},
        {Units::Micrometre, {"UM", 1e-3}}, {Units::Centimetre, {"CM", 10}},
        {Units::Micron, {"UM", 1e-3}},
    };
    Component * const top = topComponent();
    if (top == nullptr)
        return Millimetre;
    int const type = top->getUnits()->getLengthType();
    if (auto const found = Known.find(type); found != Known.end())
        return found->second;
    run.message("The model's unit (number " + std::to_string(type) +
                ") cannot be written: the file is in millimetres.");
    return Millimetre;
}

} // namespace step
