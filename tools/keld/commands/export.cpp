#include "commands/arguments.h"
#include "commands/commands.h"
#include "transfer.h"

#include <keld-transl/model/point3d.h>

#include <array>
#include <memory>
#include <vector>
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

struct Arguments
{
    CommonArguments common;
    FileArgument file;
    std::vector<std::array<double, 3>> points;
    int generated = 0; ///< so many further points
};

ExitCode exportPoints(Arguments const & arguments)
{
    if (!isUsableName(arguments.file.path))
        return WrongUsage;
    PoolGuard const pool;
    RunReport const report(arguments.common.reportDirectory);
    return exportModel(arguments.common, report, arguments.file, [&] {
        for (auto const & point : arguments.points)
            transl_tk::Point3D::create(0, point[0], point[1], point[2]);
        makeLattice(arguments.generated);
    });
}

} // namespace

void addExportCommand(CLI::App & app, ChosenCommand & chosen)
{
    CLI::App & command = *app.add_subcommand(
        "export", "Export points: those given by --point, then those that --points generates");
    auto const arguments = std::make_shared<Arguments>();
    addFileArgument(command, "FILE", "--translator", arguments->file, "The file to write");
    command.add_option("--point", arguments->points, "A point; may be given any number of times")
        ->type_name("X Y Z");
    command
        .add_option("--points", arguments->generated,
                    "Generate N points on a lattice in the unit cube")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber);
    addCommonArguments(command, arguments->common);
    command.callback(
        [arguments, &chosen] { chosen = [arguments] { return exportPoints(*arguments); }; });
}

} // namespace keld
