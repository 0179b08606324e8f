#include "export/file_unit.h"

#include "length_unit.h"

#include <keld-transl/product/component.h>
#include <keld-transl/product/instance.h>
#include <keld-translator-kit/run.h>

namespace step {

namespace {

using transl_tk::Component;
using transl_tk::Hierarchy;
using transl_tk::Instance;

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
    Component * const top = topComponent();
    if (top == nullptr)
        return Millimetre;
    int const type = top->getUnits()->getLengthType();
    LengthUnit const * const unit = lengthUnitOfType(type);
    if (unit != nullptr && unit->writerWord != nullptr)
        return {unit->writerWord, unit->millimetres};
    run.message("The model's unit (number " + std::to_string(type) +
                ") cannot be written: the file is in millimetres.");
    return Millimetre;
}

} // namespace step
