// What does an STL file of two million triangles cost on its way through a translator process into
// the host, beside another library that loads it in process?

#include "stopwatch.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/process/client_in.h>
#include <keld-transl/topology/tri_strip.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <string>
#include <unistd.h>

#if KELD_BENCH_ASSIMP
#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#endif

namespace {

constexpr int Triangles = 2000000;
char const * const File = "/dev/shm/keld_bench_part.stl";

using Corner = std::array<float, 3>;

template <class Value> void append(std::string & bytes, Value const & value)
{
    bytes.append(reinterpret_cast<char const *>(&value), sizeof value);
}

/// A tube of triangles that share their corners, in the binary form, while this lives.
class StlFile
{
public:
    StlFile()
    {
        std::string bytes(80, ' ');
        append(bytes, std::uint32_t{Triangles});
        for (int i = 0; i < Rows; ++i)
            for (int j = 0; j < Around; ++j) {
                Corner const here = corner(i, j);
                Corner const beyond = corner(i + 1, j + 1);
                appendTriangle(bytes, here, corner(i, j + 1), beyond);
                appendTriangle(bytes, here, beyond, corner(i + 1, j));
            }
        std::ofstream(File, std::ios::binary) << bytes;
    }
    StlFile(StlFile const &) = delete;
    StlFile & operator=(StlFile const &) = delete;
    ~StlFile() { ::unlink(File); }

private:
    static constexpr int Around = 1000;
    static constexpr int Rows = Triangles / 2 / Around;

    static Corner corner(int row, int column)
    {
        double const angle = 2 * 3.14159265358979323846 * (column % Around) / Around;
        return {static_cast<float>(100 * std::cos(angle)),
                static_cast<float>(100 * std::sin(angle)), 0.5F * static_cast<float>(row)};
    }
    static void appendTriangle(std::string & bytes, Corner const & a, Corner const & b,
                               Corner const & c)
    {
        Corner const noNormal{};
        for (Corner const * const numbers : {&noNormal, &a, &b, &c})
            append(bytes, *numbers);
        append(bytes, std::uint16_t{0});
    }
};

class Host : public transl_tk::ClientIn
{
public:
    std::string getSharedMemName() override { return "bench stl"; }
    void setProgress(int const &) override {}
    void setStatus(int const &) override {}
    std::string getExecCmd() override { return KELD_BENCH_TRANSLATOR; }
    std::string getLibPath() override { return ""; }
    void fillOptions() override
    {
        getExecIO()->addOption(transl_tk::IOption::create("bench", "an option without values"));
    }
    void transferModel() override
    {
        auto const & strips =
            transl_tk::Pool::getInstance()->currentSubPool()->m_TriStrips.m_Entities;
        strips.forEach([this](int, transl_tk::Base * entity) {
            float * vertices = nullptr;
            float * normals = nullptr;
            unsigned char * colours = nullptr;
            int * indices = nullptr;
            int vertexCount = 0;
            int normalCount = 0;
            int indexCount = 0;
            static_cast<transl_tk::TriStrip *>(entity)->getData(
                vertices, colours, vertexCount, normals, normalCount, indices, indexCount);
            m_Vertices += vertexCount;
            m_Triangles += indexCount / 3;
        });
    }
    void importStarted() override {}
    bool confirmImport() override { return true; }

    int m_Vertices = 0;
    int m_Triangles = 0;
};

void Import(benchmark::State & state)
{
    StlFile const file;
    for ([[maybe_unused]] auto iteration : state) {
        Host host;
        bench::timed(state, [&] { host.read(File, 1); });
        if (host.m_Triangles != Triangles)
            state.SkipWithError("the import failed");
        state.counters["vertices"] = host.m_Vertices;
        transl_tk::Pool::destruct();
    }
}

#if KELD_BENCH_ASSIMP

/// The yardstick, with the vertices merged, as the translator merges them, or each triangle with
/// its own.
template <unsigned Steps> void LoadAssimp(benchmark::State & state)
{
    StlFile const file;
    for ([[maybe_unused]] auto iteration : state) {
        Assimp::Importer importer;
        aiScene const * scene = nullptr;
        bench::timed(state, [&] { scene = importer.ReadFile(File, Steps); });
        if (scene == nullptr || scene->mMeshes[0]->mNumFaces != Triangles)
            state.SkipWithError("the file was not loaded");
        else
            state.counters["vertices"] = scene->mMeshes[0]->mNumVertices;
    }
}

void LoadMerged(benchmark::State & state)
{
    LoadAssimp<aiProcess_JoinIdenticalVertices>(state);
}

void Load(benchmark::State & state)
{
    LoadAssimp<0>(state);
}

#else

void LoadMerged(benchmark::State & state)
{
    state.SkipWithError("assimp was not there when this was built: not measured");
}

void Load(benchmark::State & state)
{
    LoadMerged(state);
}

#endif

#define KELD_BENCH(question)                                                                       \
    BENCHMARK(question)                                                                            \
        ->Name("Stl/" #question)                                                                   \
        ->UseManualTime()                                                                          \
        ->Unit(benchmark::kMillisecond)                                                            \
        ->Iterations(5)

KELD_BENCH(Import);
KELD_BENCH(LoadMerged);
KELD_BENCH(Load);

} // namespace
