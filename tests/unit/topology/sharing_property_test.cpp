#include "support/leftovers.h"
#include "support/models.h"
#include "support/shapes.h"
#include "unit/topology/sharing_ledger.h"

#include <keld-transl/geom/line.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/shell.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/tri_strip.h>
#include <keld-transl/topology/uv_curve.h>
#include <keld-transl/topology/vertex.h>

#include <cstdint>
#include <cstdlib>
#include <random>
#include <rapidcheck.h>
#include <string>

namespace transl_tk {
namespace {

using Ledger = tests::SharingLedger;

/// What happened in all models together, to see that nothing was left out.
std::set<std::string> seen;

/// The choices of one step, read off one number; 0 makes all of them the first one.
class Choices
{
public:
    explicit Choices(std::uint64_t number) : m_Number(number) {}

    int below(std::size_t limit)
    {
        auto const choice = static_cast<int>(m_Number % limit);
        m_Number /= limit;
        return choice;
    }
    /// One of these, 0 when there is none.
    int oneOf(std::vector<int> const & numbers)
    {
        return numbers.empty() ? 0 : numbers[static_cast<std::size_t>(below(numbers.size()))];
    }

private:
    std::uint64_t m_Number;
};

/// Does the same to a model and to the ledger.
class Model
{
public:
    /// One random step. Behind `tearDown` steps only take things away.
    void step(std::uint64_t number)
    {
        Choices choices(number);
        int const choice = m_IsTornDown ? 27 : choices.below(32);
        if (choice < 14)
            create(choices);
        else if (choice < 20)
            adopt(choices);
        else if (choice < 22)
            setTrace(choices);
        else if (choice < 27)
            turnEdge(choices);
        else if (choice < 31 || choices.below(16) != 15)
            destroy(choices);
        else
            clear();
    }

    void tearDown() { m_IsTornDown = true; }

    bool isEmpty() const
    {
        for (int kind = 0; kind < Ledger::Kinds; ++kind)
            if (!m_Ledger.store(static_cast<Ledger::Kind>(kind)).empty())
                return false;
        return true;
    }

    void clear()
    {
        tests::currentSubPool().clear();
        m_Ledger.clear();
        seen.insert("a clear");
    }

    /// The first difference between model and ledger, empty when there is none.
    std::string difference() const
    {
        for (int i = 0; i < Ledger::Kinds; ++i) {
            auto const kind = static_cast<Ledger::Kind>(i);
            EntityStore & store = tests::currentSubPool().*Stores[i];
            std::map<int, Base *> found;
            store.m_Entities.forEach([&](int id, Base * entity) { found[id] = entity; });
            if (found != m_Ledger.store(kind))
                return "entities of kind " + std::to_string(i);
            if (store.m_Users.size() != m_Ledger.usedIds(kind))
                return "entries of users of kind " + std::to_string(i);
        }
        for (int const edge : m_Ledger.living(Ledger::Edge)) {
            auto * const made = as<Edge>(edge);
            std::vector<int> const & uses = m_Ledger[edge].uses;
            if (made->getCurve() != entity(uses[0]) || made->getStartVertex() != entity(uses[1]) ||
                made->getEndVertex() != entity(uses[2]))
                return "what an edge uses";
        }
        return {};
    }

private:
    static constexpr EntityStore SubPool::*Stores[Ledger::Kinds] = {
        &SubPool::m_Curves3D, &SubPool::m_Surfaces,  &SubPool::m_Vertices, &SubPool::m_Edges,
        &SubPool::m_UVCurves, &SubPool::m_Fins,      &SubPool::m_Loops,    &SubPool::m_Faces,
        &SubPool::m_Shells,   &SubPool::m_TriStrips, &SubPool::m_Bodies};

    static bool isShared(Ledger::Kind kind) { return kind <= Ledger::Edge; }

    /// The entity of this number, dead or alive, null for 0.
    Base * entity(int number) const { return number == 0 ? nullptr : m_Ledger[number].entity; }
    template <class Entity> Entity * as(int number) const
    {
        return static_cast<Entity *>(entity(number));
    }

    /// Something to use: one time in four nothing.
    int used(Choices & choices, Ledger::Kind kind) const
    {
        return choices.below(4) == 3 ? 0 : choices.oneOf(m_Ledger.living(kind));
    }

    /// Makes a carrier of a shape, which stays with the caller when the id is taken.
    template <class Carrier, class Shape> static Base * carrierOf(int id, Shape * made)
    {
        auto shape = tests::owned<Shape>(made);
        Base * const carrier = Carrier::create(id, shape.get());
        if (carrier != nullptr)
            static_cast<void>(shape.release());
        return carrier;
    }

    static Base * strip(int id)
    {
        float const vertices[9] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
        return TriStrip::create(id, vertices, nullptr, 3, nullptr, 0, nullptr, 0, false);
    }

    void create(Choices & choices)
    {
        auto const kind = static_cast<Ledger::Kind>(choices.below(Ledger::Kinds));
        // Few ids, so that the freed ones come again; 0 asks for the next one.
        int const asked = choices.below(9) - 3;
        auto const [id, isFree] = m_Ledger.idFor(kind, asked);
        std::vector<int> uses;
        Base * made = nullptr;
        switch (kind) {
        case Ledger::Curve:
            made = carrierOf<Curve3D>(asked, geom::Line::create(tests::At, tests::AxisX, {}));
            break;
        case Ledger::Surface:
            made = Surface::create(asked, nullptr);
            break;
        case Ledger::Vertex:
            if (choices.below(2) == 0)
                made = Vertex::create(asked, 0.5);
            else
                made = carrierOf<Vertex>(asked, geom::Point::create(1, 2, 3));
            break;
        case Ledger::Edge: {
            int const start = used(choices, Ledger::Vertex);
            int const end = choices.below(3) == 2 ? start : used(choices, Ledger::Vertex);
            uses = {used(choices, Ledger::Curve), start, end};
            made =
                Edge::create(asked, as<Curve3D>(uses[0]), as<Vertex>(start), as<Vertex>(end), true);
            if (start != 0 && start == end)
                seen.insert("a closed edge");
            break;
        }
        case Ledger::UVCurve:
            made = UVCurve::create(asked, nullptr);
            break;
        case Ledger::Fin:
            uses = {used(choices, Ledger::Edge)};
            made = Fin::create(asked, as<Edge>(uses[0]), false);
            break;
        case Ledger::Loop:
            made = Loop::create(asked);
            break;
        case Ledger::Face:
            uses = {used(choices, Ledger::Surface)};
            made = Face::create(asked, as<Surface>(uses[0]));
            break;
        case Ledger::Shell:
            made = Shell::create(asked);
            break;
        case Ledger::Strip:
            made = strip(asked);
            break;
        case Ledger::Body:
        case Ledger::Kinds:
            made = Body::create(asked, "body");
            break;
        }
        RC_ASSERT((made != nullptr) == isFree);
        if (made == nullptr) {
            seen.insert("a taken id");
            return;
        }
        RC_ASSERT(made->getId() == id);
        if (m_Abandoned.erase({kind, id}) != 0)
            seen.insert("a successor of something destroyed that had users");
        m_Ledger.create(kind, id, made, std::move(uses));
    }

    void adopt(Choices & choices)
    {
        static constexpr struct
        {
            Ledger::Kind parent;
            Ledger::Kind child;
        } Lists[] = {{Ledger::Loop, Ledger::Fin},
                     {Ledger::Face, Ledger::Loop},
                     {Ledger::Shell, Ledger::Face},
                     {Ledger::Body, Ledger::Shell},
                     {Ledger::Body, Ledger::Strip}};
        auto const & list = Lists[choices.below(std::size(Lists))];
        int const parent = choices.oneOf(m_Ledger.living(list.parent));
        if (parent == 0)
            return;
        int const child =
            choices.below(8) == 7 ? 0 : choices.oneOf(m_Ledger.living(list.child, false));
        switch (list.child) {
        case Ledger::Fin:
            as<Loop>(parent)->addFin(as<Fin>(child));
            break;
        case Ledger::Loop:
            as<Face>(parent)->addLoop(as<Loop>(child));
            break;
        case Ledger::Face:
            as<Shell>(parent)->addFace(as<Face>(child));
            break;
        case Ledger::Shell:
            as<Body>(parent)->addShell(as<Shell>(child));
            break;
        default:
            as<Body>(parent)->addTriStrip(as<TriStrip>(child));
        }
        m_Ledger.adopt(parent, child);
        if (child == 0)
            seen.insert("a null in a list");
    }

    void setTrace(Choices & choices)
    {
        int const fin = choices.oneOf(m_Ledger.living(Ledger::Fin));
        if (fin == 0)
            return;
        int const trace =
            choices.below(4) == 3 ? 0 : choices.oneOf(m_Ledger.living(Ledger::UVCurve, false));
        as<Fin>(fin)->setUVCurve(as<UVCurve>(trace));
        if (!m_Ledger[fin].children.empty())
            seen.insert("a trace replaced");
        m_Ledger.setTrace(fin, trace);
    }

    void turnEdge(Choices & choices)
    {
        int const edge = choices.oneOf(m_Ledger.living(Ledger::Edge));
        if (edge == 0)
            return;
        auto const place = static_cast<std::size_t>(choices.below(3));
        std::vector<int> const & uses = m_Ledger[edge].uses;
        int const old = uses[place];
        int const used = this->used(choices, place == 0 ? Ledger::Curve : Ledger::Vertex);
        if (old != 0 && old == used)
            seen.insert("an edge turned to what it uses already");
        if (old != 0 && !m_Ledger[old].lives)
            seen.insert("an edge turned away from something destroyed");
        if (place != 0 && old != 0 && uses[1] == uses[2] && used != old)
            seen.insert("a closed edge opened");
        switch (place) {
        case 0:
            as<Edge>(edge)->setCurve(as<Curve3D>(used));
            break;
        case 1:
            as<Edge>(edge)->setStartVertex(as<Vertex>(used));
            break;
        default:
            as<Edge>(edge)->setEndVertex(as<Vertex>(used));
        }
        m_Ledger.setUse(edge, place, used);
    }

    /// Destroys anything that nobody owns. What is shared may still have users.
    void destroy(Choices & choices)
    {
        std::vector<int> candidates;
        for (int kind = 0; kind < Ledger::Kinds; ++kind)
            for (int const number : m_Ledger.living(static_cast<Ledger::Kind>(kind), false))
                candidates.push_back(number);
        int const victim = choices.oneOf(candidates);
        if (victim == 0)
            return;
        Ledger::Entry const entry = m_Ledger[victim];
        if (!entry.users.empty()) {
            seen.insert("something destroyed that has users");
            m_Abandoned.insert({entry.kind, entry.id});
        }
        switch (entry.kind) {
        case Ledger::Curve:
            Curve3D::destruct(as<Curve3D>(victim));
            break;
        case Ledger::Surface:
            Surface::destruct(as<Surface>(victim));
            break;
        case Ledger::Vertex:
            Vertex::destruct(as<Vertex>(victim));
            break;
        case Ledger::Edge:
            Edge::destruct(as<Edge>(victim));
            break;
        case Ledger::UVCurve:
            UVCurve::destruct(as<UVCurve>(victim));
            break;
        case Ledger::Fin:
            Fin::destruct(as<Fin>(victim));
            break;
        case Ledger::Loop:
            Loop::destruct(as<Loop>(victim));
            break;
        case Ledger::Face:
            Face::destruct(as<Face>(victim));
            break;
        case Ledger::Shell:
            Shell::destruct(as<Shell>(victim));
            break;
        case Ledger::Strip:
            TriStrip::destruct(as<TriStrip>(victim));
            break;
        case Ledger::Body:
        case Ledger::Kinds:
            Body::destruct(as<Body>(victim));
            break;
        }
        std::size_t const before = sharedCount();
        m_Ledger.destroy(victim);
        if (sharedCount() + (isShared(entry.kind) ? 1 : 0) < before)
            seen.insert("a last user that takes something along");
    }

    std::size_t sharedCount() const
    {
        std::size_t count = 0;
        for (int kind = 0; isShared(static_cast<Ledger::Kind>(kind)); ++kind)
            count += m_Ledger.store(static_cast<Ledger::Kind>(kind)).size();
        return count;
    }

    Ledger m_Ledger;
    /// Kinds and ids of what was destroyed while it had users.
    std::set<std::pair<Ledger::Kind, int>> m_Abandoned;
    bool m_IsTornDown = false;
};

/// Builds a model, takes it down again, and looks at all stores after every step.
void livesAsLongAsItsUsers(std::vector<std::uint64_t> const & steps, std::uint64_t seed)
{
    tests::ScopedPool const pool;
    Model model;
    for (std::uint64_t const step : steps) {
        model.step(step);
        RC_ASSERT(model.difference() == "");
    }
    model.tearDown();
    std::mt19937_64 random(seed);
    while (seed % 4 != 0 && !model.isEmpty()) {
        model.step(random());
        RC_ASSERT(model.difference() == "");
    }
    model.clear();
    RC_ASSERT(model.difference() == "");
}

TEST(SharingProperty, WhateverIsSharedLivesExactlyAsLongAsItsUsers)
{
    // The same models in every run, unless the one who runs it asks for others.
    char const * const asked = std::getenv("RC_PARAMS");
    tests::ScopedEnvironment const parameters("RC_PARAMS",
                                              asked != nullptr ? asked : "seed=4 max_success=400");
    constexpr double StepsPerSize = 5;
    // Numbers of full width, whatever the length of the list.
    auto const number = rc::gen::resize(rc::kNominalSize, rc::gen::arbitrary<std::uint64_t>());
    EXPECT_TRUE(rc::check("sharing goes by plain counts of references", [&] {
        auto const steps =
            *rc::gen::scale(StepsPerSize, rc::gen::container<std::vector<std::uint64_t>>(number));
        livesAsLongAsItsUsers(steps, *number);
    }));
    EXPECT_EQ(seen,
              (std::set<std::string>{
                  "a clear", "a closed edge", "a closed edge opened",
                  "a last user that takes something along", "a null in a list",
                  "a successor of something destroyed that had users", "a taken id",
                  "a trace replaced", "an edge turned away from something destroyed",
                  "an edge turned to what it uses already", "something destroyed that has users"}));
}

} // namespace
} // namespace transl_tk
