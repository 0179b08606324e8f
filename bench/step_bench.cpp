// What does a STEP file cost on its way through a translator process into the host, beside the
// kernel that reads it in process?

#include "fresh_process.h"
#include "import/document.h"
#include "import/facets.h"
#include "import/structure.h"
#include "step_files.h"
#include "step_host.h"
#include "step_kernel.h"
#include "stopwatch.h"
#include "trail.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/process/exec_io.h>
#include <keld-transl/process/server.h>
#include <keld-translator-kit/options.h>
#include <keld-translator-kit/run.h>

#include <BinXCAFDrivers.hxx>
#include <XCAFApp_Application.hxx>
#include <algorithm>
#include <array>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/resource.h>
#include <vector>

namespace {

using bench::StepFile;

constexpr double MiB = 1024 * 1024;

double medianOf(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

template <class Work> double secondsOf(Work && work)
{
    auto const start = std::chrono::steady_clock::now();
    work();
    auto const end = std::chrono::steady_clock::now();
    return std::chrono::duration<double>(end - start).count();
}

/// Seconds of processors that this process, or its children that have ended, were given so far.
double processorSeconds(int whose)
{
    rusage usage{};
    ::getrusage(whose, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           1e-6 * static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec);
}

double processorSeconds()
{
    return processorSeconds(RUSAGE_SELF) + processorSeconds(RUSAGE_CHILDREN);
}

/// Seconds that something took, on the clock and of this process's processors.
struct Span
{
    double clock = 0;
    double processor = 0;
};

template <class Work> Span spanOf(Work && work)
{
    double const before = processorSeconds(RUSAGE_SELF);
    double const clock = secondsOf(work);
    return {clock, processorSeconds(RUSAGE_SELF) - before};
}

/// Seconds of something and of its yardstick, taken in turn, so that other work on the machine
/// hits both.
class Turns
{
public:
    void add(double seconds, double yardstick)
    {
        m_Seconds.push_back(seconds);
        m_Yardstick.push_back(yardstick);
    }

    /// The medians as counters "ms", "yardstick_ms", their quotient "over" and difference
    /// "more_ms", with `prefix` before the names.
    void tell(benchmark::State & state, std::string const & prefix = "") const
    {
        double const seconds = medianOf(m_Seconds);
        double const yardstick = medianOf(m_Yardstick);
        state.counters[prefix + "ms"] = 1000 * seconds;
        state.counters[prefix + "yardstick_ms"] = 1000 * yardstick;
        state.counters[prefix + "over"] = seconds / yardstick;
        state.counters[prefix + "more_ms"] = 1000 * (seconds - yardstick);
    }

private:
    std::vector<double> m_Seconds;
    std::vector<double> m_Yardstick;
};

/// The numbers that a helper program prints about a file; none when it fails.
template <std::size_t Count>
std::array<double, Count> numbersOf(std::string const & program, std::string const & path)
{
    std::array<double, Count> numbers{};
    FILE * const output = ::popen((program + " '" + path + "'").c_str(), "r");
    if (output == nullptr)
        return numbers;
    for (double & number : numbers) {
        if (std::fscanf(output, "%lf", &number) != 1)
            number = 0;
    }
    if (::pclose(output) != 0)
        numbers = {};
    return numbers;
}

struct HostNumbers
{
    explicit HostNumbers(std::string const & path)
    {
        auto const numbers = numbersOf<5>(KELD_BENCH_STEP_HOST, path);
        seconds = numbers[0];
        peak = numbers[1];
        model = numbers[2];
        segment = numbers[3];
        translatorPeak = numbers[4];
    }

    double seconds, peak, model, segment, translatorPeak;
};

struct KernelNumbers
{
    explicit KernelNumbers(std::string const & path)
    {
        auto const numbers = numbersOf<2>(KELD_BENCH_STEP_KERNEL, path);
        seconds = numbers[0];
        peak = numbers[1];
    }

    double seconds, peak;
};

/// Host and kernel in processes of their own, which have read nothing before.
void FirstImport(benchmark::State & state, StepFile const & file)
{
    Turns turns;
    for ([[maybe_unused]] auto iteration : state) {
        HostNumbers const host(file.path);
        KernelNumbers const kernel(file.path);
        if (host.seconds == 0 || kernel.seconds == 0)
            state.SkipWithError("the file could not be read");
        bench::setTime(state, host.seconds);
        turns.add(host.seconds, kernel.seconds);
    }
    turns.tell(state);
}

/// Host and kernel in this process, which has read the file with both before.
void Import(benchmark::State & state, StepFile const & file)
{
    Turns turns;
    auto const import = [&] {
        bench::StepHost host;
        bool isRead = false;
        double const seconds = secondsOf([&] { isRead = host.read(file.path, 1); });
        transl_tk::Pool::destruct();
        return isRead ? seconds : 0;
    };
    auto const byKernel = [&] { return bench::Kernel().read(file.path); };
    import();
    byKernel();
    Turns processor;
    for ([[maybe_unused]] auto iteration : state) {
        double const before = processorSeconds();
        double const seconds = import();
        double const between = processorSeconds();
        double const yardstick = byKernel();
        if (seconds == 0 || yardstick == 0)
            state.SkipWithError("the file could not be read");
        bench::setTime(state, seconds);
        turns.add(seconds, yardstick);
        processor.add(between - before, processorSeconds() - between);
    }
    turns.tell(state);
    processor.tell(state, "cpu_");
}

/// What the toolkit does beyond the kernel's reading, beside the kernel's own binary format: map
/// the document to a model, write the segment, read it; against saving the same document and
/// opening it.
void Added(benchmark::State & state, StepFile const & file)
{
    int const nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    transl_tk::RWFD frames(nowhere);
    transl_tk::IExecIO * const given = transl_tk::IExecIO::create();
    translator_kit::Options const options(*given);
    transl_tk::Pool::construct("bench");
    translator_kit::Trail trail({});
    translator_kit::Run run(frames, options, trail,
                            *transl_tk::Pool::getInstance()->currentSubPool());
    step::Coverage coverage;
    step::Document const document =
        step::readDocument(file.path, step::FileKind::Step, run, coverage);
    transl_tk::Pool::destruct();
    step::FacetSettings const facets(options);
    auto const application = XCAFApp_Application::GetApplication();
    BinXCAFDrivers::DefineFormat(application);
    document.content->ChangeStorageFormat("BinXCAF");
    std::string const segment = "bench step added " + std::to_string(::getpid());
    std::string const saved = file.path + ".xbf";
    std::string const target =
        std::filesystem::exists("/dev/shm")
            ? "/dev/shm/keld_bench_step_" + std::to_string(::getpid()) + ".xbf"
            : saved;

    Turns turns;
    Turns processor;
    std::vector<double> parts[5];
    for ([[maybe_unused]] auto iteration : state) {
        transl_tk::Pool::construct("bench");
        translator_kit::Run mapping(frames, options, trail,
                                    *transl_tk::Pool::getInstance()->currentSubPool());
        step::Coverage counts;
        Span const map =
            spanOf([&] { step::Structure(document, file.name, facets, counts).build(mapping); });
        long long size = 0;
        Span const write = spanOf([&] { size = transl_tk::Server::writeSharedMem(segment); });
        transl_tk::Pool::destruct();
        // One process holds one segment: the reader is another, as in a run.
        auto const reading = [&](double Span::*which) {
            return bench::inFreshProcess([&] {
                transl_tk::Pool::construct("first");
                Span const span = spanOf([&] { transl_tk::Server::readSharedMem(segment, size); });
                return transl_tk::Server::exchangeFailure().empty() ? span.*which : 0;
            });
        };
        Span const read = {reading(&Span::clock), reading(&Span::processor)};
        if (read.clock == 0)
            state.SkipWithError("the model was not read");
        transl_tk::Server::unmapSharedMemory(true);

        bool isThere = false;
        Span const save = spanOf(
            [&] { isThere = application->SaveAs(document.content, target.c_str()) == PCDM_SS_OK; });
        Handle(TDocStd_Document) opened;
        // The document that was saved is taken for open under its name.
        std::string const copy = target + ".copy";
        std::filesystem::rename(target, copy);
        Span const open = spanOf(
            [&] { isThere = isThere && application->Open(copy.c_str(), opened) == PCDM_RS_OK; });
        if (!isThere)
            state.SkipWithError("the kernel could not save and open the document");
        else
            application->Close(opened);
        std::filesystem::remove(copy);

        bench::setTime(state, map.clock + write.clock + read.clock);
        turns.add(map.clock + write.clock + read.clock, save.clock + open.clock);
        processor.add(map.processor + write.processor + read.processor,
                      save.processor + open.processor);
        std::size_t next = 0;
        for (Span const & part : {map, write, read, save, open})
            parts[next++].push_back(part.processor);
    }
    turns.tell(state);
    processor.tell(state, "cpu_");
    std::size_t next = 0;
    for (char const * const name :
         {"map_cpu_ms", "write_cpu_ms", "read_cpu_ms", "save_cpu_ms", "open_cpu_ms"})
        state.counters[name] = 1000 * medianOf(parts[next++]);
    application->Close(document.content);
    transl_tk::IExecIO::destruct(given);
    ::close(nowhere);
}

void Memory(benchmark::State & state, StepFile const & file)
{
    for ([[maybe_unused]] auto iteration : state) {
        HostNumbers const host(file.path);
        KernelNumbers const kernel(file.path);
        if (host.seconds == 0 || kernel.seconds == 0)
            state.SkipWithError("the file could not be read");
        state.counters["host_MiB"] = host.peak / MiB;
        state.counters["model_MiB"] = host.model / MiB;
        state.counters["segment_MiB"] = host.segment / MiB;
        state.counters["host_over_MiB"] = (host.peak - host.model - host.segment) / MiB;
        state.counters["translator_MiB"] = host.translatorPeak / MiB;
        state.counters["kernel_MiB"] = kernel.peak / MiB;
        state.counters["translator_over_kernel"] = host.translatorPeak / kernel.peak;
    }
}

void add(std::string const & question, void (*function)(benchmark::State &, StepFile const &),
         StepFile const & file, int iterations)
{
    benchmark::RegisterBenchmark(
        ("Step/" + question + "/" + file.name).c_str(),
        [function, file](benchmark::State & state) { function(state, file); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(iterations);
}

} // namespace

int main(int count, char ** arguments)
{
    benchmark::Initialize(&count, arguments);
    bench::StepFiles const files;
    for (StepFile const & file : files.all()) {
        bool const isLarge = std::filesystem::file_size(file.path) > 1000000;
        int const iterations = isLarge ? 7 : 15;
        add("FirstImport", FirstImport, file, iterations);
        add("Import", Import, file, iterations);
        add("Added", Added, file, iterations);
        add("Memory", Memory, file, 1);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
