#include "commands/commands.h"
#include "interrupt.h"
#include "transfer.h"

#include <keld-transl/model/point3d.h>

namespace keld {

namespace {

/// Points on a cubic lattice of edge length 1, layer by layer.
void makeLattice(int count)
{
    int edge = 1;
    while (static_cast<long long>(edge) * edge * edge < count)
        ++edge;
    double const step = 1.0 / edge;
    for (int i = 0; i < count; ++i) {
        int const row = i / edge;
        int const layer = row / edge;
        transl_tk::Point3D::create(0, step * (i % edge), step * (row % edge), step * layer);
    }
}

} // namespace

ExitCode runExport(ExportArguments const & arguments)
{
    if (!isUsableName(arguments.file.path))
        return WrongUsage;
    cleanUpOnInterrupt();
    PoolGuard const pool;
    RunReport const report(arguments.common.reportDirectory);
    return exportModel(arguments.common, report, arguments.file, [&] {
        for (auto const & point : arguments.points)
            transl_tk::Point3D::create(0, point[0], point[1], point[2]);
        makeLattice(arguments.generated);
    });
}

} // namespace keld
