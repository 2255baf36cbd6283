// What saving and loading the catalogue costs by its size. For the price of a whole save there is one of the same bytes
// written in the plainest way beside it.
#include <malloc.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include <benchmark/benchmark.h>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/Utf.h>

#include "support/TableReporter.h"

namespace {

using namespace zelaudiofilterhost;
using zelcore::filesupport::File;

zelcore::ustring U(const std::string& text) { return zelcore::utility::UTF8to16(text); }

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        mPath = std::filesystem::temp_directory_path() / ("zelbenchmark-" + std::to_string(random()));
        std::filesystem::create_directory(mPath);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string Path(const std::string& name) const { return (mPath / name).string(); }
    File FileOf(const std::string& name) const { return File(U(Path(name))); }

private:
    std::filesystem::path mPath;
};

PluginModuleInfoManager& Catalogue() { return PluginModuleInfoManager::GetInstance(); }

PluginLocator LocatorOf(std::int64_t number) {
    return PluginLocator(kTechnologyVST3,
                         U("/usr/lib/vst3/Some Vendor/Plug-In Number " + std::to_string(number) + ".vst3"));
}

void Fill(const TemporaryFolder& folder, std::int64_t count) {
    Catalogue().LoadConfiguration(folder.FileOf("nothing"));
    PluginComponentInfo component;
    component.componentId = U("VST3-5653544e6f4d61704e6f204d61702121");
    component.name = U("Plug-In Number");
    component.vendor = U("Some Vendor");
    component.version = U("1.2.3");
    component.category = U("Fx|Delay");
    component.parameterCount = 40;
    component.inputBuses = {{U("Stereo In"), 2, false}, {U("Side-chain"), 1, true}};
    component.outputBuses = {{U("Stereo Out"), 2, false}};
    for (std::int64_t i = 0; i < count; ++i) {
        Catalogue().AddPluginInfo(new PluginModuleInfo(LocatorOf(i), U("Plug-In " + std::to_string(i)),
                                                       PluginFingerprint{1234567, 1700000000000 + i}, {component}));
    }
}

void SetBytes(benchmark::State& state, const std::string& path) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(std::filesystem::file_size(path)));
}

void SaveWhole(benchmark::State& state) {
    const TemporaryFolder folder;
    Fill(folder, state.range(0));
    // A file other than that of the last save is always written whole.
    const File files[] = {folder.FileOf("a.xml"), folder.FileOf("b.xml")};
    std::size_t turn = 0;
    for (auto _ : state) Catalogue().SaveConfiguration(files[++turn % 2], true);
    SetBytes(state, folder.Path("b.xml"));
}

void WriteSameBytesPlainly(benchmark::State& state) {
    const TemporaryFolder folder;
    Fill(folder, state.range(0));
    Catalogue().SaveConfiguration(folder.FileOf("a.xml"), true);
    std::ifstream stream(folder.Path("a.xml"), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    for (auto _ : state) {
        std::ofstream out(folder.Path("new.xml"), std::ios::binary);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.close();
        std::filesystem::rename(folder.Path("new.xml"), folder.Path("b.xml"));
    }
    SetBytes(state, folder.Path("b.xml"));
}

void SaveOneChange(benchmark::State& state) {
    const TemporaryFolder folder;
    Fill(folder, state.range(0));
    const File file = folder.FileOf("a.xml");
    Catalogue().SaveConfiguration(file, true);
    std::int64_t number = 0;
    for (auto _ : state) {
        const auto info = Catalogue().FindPluginInfo(LocatorOf(++number % state.range(0)));
        info->SetEnabled(!info->IsEnabled());
        Catalogue().SaveConfiguration(file, true);
    }
}

void SaveNothingNew(benchmark::State& state) {
    const TemporaryFolder folder;
    Fill(folder, state.range(0));
    const File file = folder.FileOf("a.xml");
    for (auto _ : state) Catalogue().SaveConfiguration(file, true);
}

void Load(benchmark::State& state) {
    const TemporaryFolder folder;
    Fill(folder, state.range(0));
    const File file = folder.FileOf("a.xml");
    Catalogue().SaveConfiguration(file, true);
    for (auto _ : state) {
        if (Catalogue().LoadConfiguration(file) != PluginModuleInfoManager::kLoaded) state.SkipWithError("not loaded");
    }
    SetBytes(state, folder.Path("a.xml"));
}

void RemoveAll(benchmark::State& state) {
    const TemporaryFolder folder;
    std::vector<PluginLocator> locators;
    for (std::int64_t i = 0; i < state.range(0); ++i) locators.push_back(LocatorOf(i));
    for (auto _ : state) {
        state.PauseTiming();
        Fill(folder, state.range(0));
        state.ResumeTiming();
        Catalogue().RemovePluginLocators(locators);
    }
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(100)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(SaveWhole)->Apply(Sizes);
BENCHMARK(WriteSameBytesPlainly)->Apply(Sizes);
BENCHMARK(SaveOneChange)->Apply(Sizes);
BENCHMARK(SaveNothingNew)->Apply(Sizes);
BENCHMARK(Load)->Apply(Sizes);
BENCHMARK(RemoveAll)->Apply(Sizes);

/// What an entry takes in memory, beside its line in the file.
void AddMemoryRow() {
    constexpr std::int64_t kEntries = 100000;
    const TemporaryFolder folder;
    Catalogue().LoadConfiguration(folder.FileOf("nothing"));
    const auto getUsed = [] {
        const struct mallinfo2 heap = mallinfo2();
        return static_cast<double>(heap.uordblks + heap.hblkhd);
    };
    const double before = getUsed();
    Fill(folder, kEntries);
    const double perEntry = (getUsed() - before) / kEntries;
    Catalogue().SaveConfiguration(folder.FileOf("a.xml"), true);
    const double perLine = static_cast<double>(std::filesystem::file_size(folder.Path("a.xml"))) / kEntries;
    zelbench::AddTableRow("memory of a catalogue entry", "bytes", perEntry, "its line in the file", perLine);
}

void AddRows(const zelbench::TableReporter& reporter) {
    for (const char* const size : {"100", "10000", "100000"}) {
        const std::string entries = std::string(size) + " entries";
        reporter.AddRow("save a whole catalogue, " + entries, "us", std::string("SaveWhole/") + size,
                        "write the same bytes", std::string("WriteSameBytesPlainly/") + size);
    }
    reporter.AddRow("save one change, 100000 entries", "us", "SaveOneChange/100000", "with 100 entries",
                    "SaveOneChange/100");
    reporter.AddRow("load, each of 100000 entries", "us", "Load/100000", "each of 100 entries", "Load/100", 100000.0,
                    100.0);
    reporter.AddRow("remove, each of 100000 entries", "us", "RemoveAll/100000", "each of 100 entries", "RemoveAll/100",
                    100000.0, 100.0);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    zelbench::TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    AddRows(reporter);
    AddMemoryRow();
    return 0;
}
