#ifndef KELD_TESTS_STEP_EXPORT_FIXTURE_H
#define KELD_TESTS_STEP_EXPORT_FIXTURE_H

#include "step/made_files.h"
#include "step/received_model.h"
#include "step/sent_model.h"
#include "support/leftovers.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>

#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>

namespace tests {

// How an export ends.
inline constexpr unsigned ExportFailed = 1;
inline constexpr unsigned UnsupportedFileType = 2;
inline constexpr unsigned EmptyModel = 3;
inline constexpr unsigned Completed = 8;

/// A transform, column by column.
using Matrix = std::array<double, 16>;
inline constexpr Matrix Identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// Exports models to files in a folder of the test's own.
class ExportFixture : public testing::Test
{
protected:
    std::string target(std::string const & name = "out.step") const { return m_Files / name; }

    SentModel send(std::function<void()> const & fill,
                   std::map<std::string, std::string> const & options = {}) const
    {
        return SentModel(target(), fill, options);
    }

    /// Imports `shape`, puts what `build` makes of its part on top, and exports that.
    SentModel sendWith(TopoDS_Shape const & shape,
                       std::function<void(transl_tk::Part &)> const & build) const
    {
        std::string const from = m_Files / "shape.brep";
        writeBrep(shape, from);
        ReceivedModel const received(from);
        return send([&] {
            transl_tk::Pool::getInstance()->setCurrent(from);
            auto & hierarchies = received.model().m_Hierarchies.m_Entities;
            build(static_cast<transl_tk::Part &>(*hierarchies.begin()->second));
        });
    }

    LeftoverGuard m_Guard;
    TemporaryDirectory m_Files;
};

inline void addInstance(transl_tk::Assembly & assembly, transl_tk::Component & component,
                        Matrix const & matrix)
{
    transl_tk::Instance * const instance = transl_tk::Instance::create(0, &component);
    instance->setTransform(matrix.data());
    assembly.addChild(instance);
}

} // namespace tests

#endif
