#include "geom/ownerless.h"

#include <unordered_map>
#include <utility>
#include <vector>

namespace geom {

namespace {

struct Shape
{
    void const * model;
    Curve * curve; ///< this or the next
    Surface * surface;
};

using Shapes = std::unordered_map<void const *, Shape>;

/// Null while there are none, as nearly always, so that a shape's end costs one look.
Shapes * g_Shapes = nullptr;

void remember(void const * shape, Shape const & entry)
{
    if (g_Shapes == nullptr)
        g_Shapes = new Shapes;
    g_Shapes->insert_or_assign(shape, entry);
}

} // namespace

void rememberOwnerless(void const * model, Curve * curve)
{
    remember(curve, {model, curve, nullptr});
}

void rememberOwnerless(void const * model, Surface * surface)
{
    remember(surface, {model, nullptr, surface});
}

void freeOwnerless(void const * model)
{
    if (g_Shapes == nullptr)
        return;
    std::vector<Shape> shapes;
    for (auto const & [key, shape] : *g_Shapes)
        if (shape.model == model)
            shapes.push_back(shape);
    // None of these owns another one that is remembered: owned curves never are.
    for (Shape const & shape : shapes) {
        Curve::destruct(shape.curve);
        Surface::destruct(shape.surface);
    }
}

void forgetOwnerless(void const * shape) noexcept
{
    if (g_Shapes == nullptr)
        return;
    g_Shapes->erase(shape);
    if (g_Shapes->empty())
        delete std::exchange(g_Shapes, nullptr);
}

} // namespace geom
