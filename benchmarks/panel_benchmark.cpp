// panel_benchmark: the panels' work beside ppdOpenFd + ppdClose of the same PPD, in one run.

#include "generated_ppd.h"

#include "host/session/session.h"

#include "framework/option_keywords.h"
#include "host/session/program_files.h"
#include "toolkit/popup_list.h"
#include "toolkit/user_defaults.h"

#include <benchmark/benchmark.h>
#include <cups/ppd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <sys/mman.h>
#include <time.h>
#include <unistd.h>
#include <vector>

using benchmarks::kPrinters;
using benchmarks::ppdText;
using benchmarks::Printer;

namespace {

// This thread's own time on a processor: all that is measured happens in it, and others on the machine do not count.
double seconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

[[noreturn]] void fail(const std::string& why) {
    std::fprintf(stderr, "panel_benchmark: %s\n", why.c_str());
    std::exit(2);
}

// Nobody is there to answer: the first button.
class FirstButton final : public host::AlertPresenter {
public:
    toolkit::AlertAnswer presentAlert(const toolkit::Alert&, bool) override { return {}; }
    void presentPanel(const toolkit::AlertPanel&) override {}
    void presentWindow(toolkit::Window&) override {}
    void openHelp(std::string_view, std::string_view) override {}
};

// A print dialog on a PPD, step by step.
class Dialog {
public:
    explicit Dialog(const std::string& ppd) {
        std::string error;
        const std::vector<std::string> languages = {"en"};
        host::SessionOptions options;
        options.plugIn = host::PlugIn::load(host::pathOfPlugInBundle(), error);
        if (options.plugIn == nullptr)
            fail(error);
        options.description = printing::PrinterDescription::openText(ppd, languages, error);
        if (options.description == nullptr)
            fail(error);
        options.description->markDefaults();
        options.bundleView.languages = languages;
        options.userDefaults = &defaults_;
        options.presenter = &presenter_;
        session_ = host::Session::open(std::move(options), error);
        if (session_ == nullptr || session_->panels().size() != 2)
            fail("no panels: " + error);
    }

    host::Session& session() { return *session_; }
    CVPrintQualityPDE& printSettings() { return *session_->panels()[0]; }
    CVPrintQualityPDE& colorSettings() { return *session_->panels()[1]; }

    // Further panels of the same session, which the caller owns.
    framework::PanelList makePanels() {
        return session_->principalObject().PDEPanelsForTypeWithHostInfo(CVInkQuality12PDEPlugIn::kPrintDialogPanelType,
                                                                        session_.get());
    }

private:
    toolkit::MemoryUserDefaults defaults_;
    FirstButton presenter_;
    std::shared_ptr<host::Session> session_;
};

void restoreAll(const framework::PanelList& panels) {
    for (const auto& panel : panels)
        panel->restoreValuesAndReturnError();
}

// Brings one panel after the other to the front, which fills its controls.
void fillAll(const framework::PanelList& panels) {
    for (const auto& panel : panels) {
        panel->willShow();
        panel->shouldHide();
    }
}

void openPpd(benchmark::State& state, const std::string& text) {
    const int memory = memfd_create("ppd", MFD_CLOEXEC);
    if (memory < 0 || ::write(memory, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        fail("no memory for the PPD");
    for ([[maybe_unused]] auto _ : state) {
        ::lseek(memory, 0, SEEK_SET);
        const int descriptor = ::dup(memory); // ppdOpenFd closes it
        const double start = seconds();
        ppd_file_t* ppd = ppdOpenFd(descriptor);
        ppdClose(ppd);
        state.SetIterationTime(seconds() - start);
        if (ppd == nullptr)
            fail("libcups refuses the PPD");
    }
    ::close(memory);
}

void makePanels(benchmark::State& state, const std::string& text, bool withForms) {
    Dialog dialog(text);
    for ([[maybe_unused]] auto _ : state) {
        const double start = seconds();
        const framework::PanelList panels = dialog.makePanels();
        restoreAll(panels);
        const double loading = seconds();
        for (const auto& panel : panels)
            if (panel->panelView() == nullptr)
                fail("a panel has no view");
        const double filling = seconds();
        fillAll(panels);
        const double all = seconds() - start;
        state.SetIterationTime(withForms ? all : all - (filling - loading));
    }
}

void changeMediaType(benchmark::State& state, const std::string& text) {
    Dialog dialog(text);
    if (!dialog.session().showPanel(dialog.printSettings()))
        fail("the first panel has no view");
    auto* popup = dynamic_cast<toolkit::PopUpList*>(dialog.printSettings().loadedViews()->viewNamed("mediaTypePopup"));
    if (popup == nullptr)
        fail("there is no list of media types");
    bool glossy = false;
    for ([[maybe_unused]] auto _ : state) {
        glossy = !glossy;
        const char* wanted = glossy ? "Glossy" : "Plain";
        const int index = popup->indexOfItemWithKeyword(wanted);
        const double start = seconds();
        popup->userSelectedItemAtIndex(index);
        state.SetIterationTime(seconds() - start);
        if (dialog.session().description().markedChoice(keywords::kMediaType) != wanted)
            fail("the media type was not changed");
        benchmark::DoNotOptimize(dialog.session().takeRecord());
    }
}

void summarize(benchmark::State& state, const std::string& text, std::size_t which) {
    Dialog dialog(text);
    for (const auto& panel : dialog.session().panels()) {
        if (!dialog.session().showPanel(*panel))
            fail("a panel has no view");
        panel->shouldHide();
    }
    CVPrintQualityPDE& panel = which == 0 ? dialog.printSettings() : dialog.colorSettings();
    for ([[maybe_unused]] auto _ : state) {
        const double start = seconds();
        benchmark::DoNotOptimize(panel.summaryInfo());
        state.SetIterationTime(seconds() - start);
    }
}

// What is measured. A limit of 0: none.
struct Work {
    const char* name;
    void (*run)(benchmark::State& state, const std::string& text);
    double limit[std::size(kPrinters)], goal[std::size(kPrinters)]; // as a part of opening the PPD
};
constexpr const char* kOpening = "ppdOpenFd + ppdClose";
constexpr Work kWorks[] = {
    {kOpening, openPpd, {}, {}},
    {"both panels made, restored, filled",
     [](benchmark::State& state, const std::string& text) { makePanels(state, text, false); },
     {0.10, 0.05},
     {0.05, 0.02}},
    {"the same, with reading the forms",
     [](benchmark::State& state, const std::string& text) { makePanels(state, text, true); },
     {},
     {}},
    {"media-type change", changeMediaType, {0.15, 0.15}, {0.08, 0.10}},
    {"summary of print settings",
     [](benchmark::State& state, const std::string& text) { summarize(state, text, 0); },
     {0.10, 0.10},
     {0.05, 0.05}},
    {"summary of color settings",
     [](benchmark::State& state, const std::string& text) { summarize(state, text, 1); },
     {0.10, 0.10},
     {0.05, 0.05}},
};

std::string benchmarkName(const Printer& printer, const Work& work) {
    return std::string(printer.name) + ": " + work.name;
}

// Keeps the times of every repetition and prints their medians at the end.
class RatioReporter final : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration)
                seconds_[run.run_name.function_name].push_back(run.real_accumulated_time /
                                                               static_cast<double>(run.iterations));
    }

    /// False when a ratio is above its limit.
    bool print() {
        bool isWithinLimits = true;
        for (std::size_t index = 0; index < std::size(kPrinters); ++index) {
            const Printer& printer = kPrinters[index];
            const double opening = median(benchmarkName(printer, kWorks[0]));
            std::printf("%s (%d options, %d sizes, %d constraints): %s %.1f us\n", printer.name, printer.options,
                        printer.sizes, printer.constraints, kOpening, opening * 1e6);
            for (const Work& work : kWorks) {
                if (work.name == kOpening)
                    continue;
                const double own = median(benchmarkName(printer, work));
                std::printf("  %-36s %9.1f us  %6.3f", work.name, own * 1e6, own / opening);
                if (work.limit[index] > 0) {
                    std::printf("  (goal %.2f, limit %.2f)", work.goal[index], work.limit[index]);
                    isWithinLimits = isWithinLimits && own / opening <= work.limit[index];
                }
                std::printf("\n");
            }
        }
        return isWithinLimits;
    }

private:
    double median(const std::string& name) {
        std::vector<double>& values = seconds_[name];
        if (values.empty())
            fail("\"" + name + "\" was not measured");
        const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::nth_element(values.begin(), middle, values.end());
        return *middle;
    }

    std::map<std::string, std::vector<double>> seconds_;
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const bool isCheck = argc > 1 && std::string_view(argv[1]) == "--check";
    constexpr int kRepetitions = 15;
    constexpr double kSecondsPerRepetition = 0.05;
    for (const Printer& printer : kPrinters)
        for (const Work& work : kWorks)
            benchmark::RegisterBenchmark(
                benchmarkName(printer, work).c_str(),
                [&work, text = ppdText(printer)](benchmark::State& state) { work.run(state, text); })
                ->UseManualTime()
                ->MinTime(kSecondsPerRepetition)
                ->Repetitions(kRepetitions);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return !reporter.print() && isCheck ? 1 : 0;
}
