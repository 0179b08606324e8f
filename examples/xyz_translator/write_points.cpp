#include "xyz_file.h"

#include <keld-transl/model/point3d.h>
#include <keld-translator-kit/limited_warnings.h>
#include <keld-translator-kit/translator.h>

#include <charconv>
#include <cmath>
#include <vector>

namespace xyz {

namespace {

using translator_kit::Failure;
using translator_kit::LimitedWarnings;
using translator_kit::OutputFile;
using translator_kit::Reason;
using translator_kit::Run;

constexpr std::size_t BufferSize = 1 << 20;
/// The longest shortest form of a double is "-2.2250738585072014e-308".
constexpr std::size_t LineSize = 3UL * 25;

class PointWriter
{
public:
    explicit PointWriter(std::string const & path) : m_File(path), m_Buffer(BufferSize) {}

    void write(double const (&position)[3])
    {
        if (m_Buffer.size() - m_Used < LineSize)
            flush();
        for (double const number : position) {
            char * const first = m_Buffer.data() + m_Used;
            char * const end = std::to_chars(first, m_Buffer.data() + m_Buffer.size(), number).ptr;
            *end = ' ';
            m_Used += static_cast<std::size_t>(end - first) + 1;
        }
        m_Buffer[m_Used - 1] = '\n';
    }

    void commit()
    {
        flush();
        m_File.commit();
    }

private:
    void flush()
    {
        m_File.write(m_Buffer.data(), m_Used);
        m_Used = 0;
    }

    OutputFile m_File;
    std::vector<char> m_Buffer;
    std::size_t m_Used = 0;
};

} // namespace

void writePoints(std::string const & path, Run & run)
{
    transl_tk::EntityTable const & points = run.model().m_Points.m_Entities;
    if (points.empty())
        throw Failure(Reason::EmptyModel,
                      "The model holds no points; " + path + " is not written.");

    PointWriter writer(path);
    LimitedWarnings faults(run);
    std::size_t done = 0;
    points.forEach([&](int id, transl_tk::Base * entity) {
        double position[3];
        static_cast<transl_tk::Point3D *>(entity)->getCoordinates(position[0], position[1],
                                                                  position[2]);
        if (std::isfinite(position[0]) && std::isfinite(position[1]) && std::isfinite(position[2]))
            writer.write(position);
        else
            faults.add("Point " + std::to_string(id) + " is left out: its position is not finite.");
        if (++done % 65536 == 0)
            run.progress(static_cast<int>(100 * done / points.size()));
    });
    faults.end("points are left out, because their positions are not finite");
    if (faults.count() == static_cast<long long>(points.size()))
        throw Failure(Reason::EmptyModel, "No point can be written; " + path + " is not written.");
    writer.commit();
    run.progress(100);
}

} // namespace xyz
