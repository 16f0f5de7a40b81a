// The headless start of the program, up to its first prompt, against the start of an empty Qt Widgets
// program.
#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <vector>

namespace {

constexpr int kRuns = 15;
constexpr double kNanoseconds = 1e9;

/// Seconds from the start of a program to the first text that it writes; negative when it wrote none.
double secondsToFirstText(const QString& program, const QStringList& arguments, const QString& profile) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("KORVEX_PROFILE_DIR", profile);
    process.setProcessEnvironment(environment);
    QElapsedTimer clock;
    clock.start();
    process.start(program, arguments);
    const bool wrote = process.waitForReadyRead(20000);
    const double seconds = static_cast<double>(clock.nsecsElapsed()) / kNanoseconds;
    process.waitForFinished();
    return wrote && process.exitCode() == 0 ? seconds : -1;
}

double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + kRuns / 2, values.end());
    return values[kRuns / 2];
}

void headlessStart(benchmark::State& state) {
    const QTemporaryDir profile;
    const QString korvex = KORVEX_PROGRAM;
    const QString floor = KORVEX_EMPTY_PROGRAM;
    const QStringList arguments{"--headless", "-c", "QUIT"};
    secondsToFirstText(korvex, arguments, profile.path());  // makes the profile
    for (auto _ : state) {
        std::vector<double> ours;
        std::vector<double> empty;
        for (int i = 0; i < kRuns; ++i) {
            empty.push_back(secondsToFirstText(floor, {}, profile.path()));
            ours.push_back(secondsToFirstText(korvex, arguments, profile.path()));
        }
        if (*std::min_element(ours.begin(), ours.end()) < 0 ||
            *std::min_element(empty.begin(), empty.end()) < 0) {
            state.SkipWithError("a program did not start");
            return;
        }
        state.counters["start_ms"] = median(ours) * 1e3;
        state.counters["floor_ms"] = median(empty) * 1e3;
        state.counters["ratio"] = median(ours) / median(empty);
    }
}
BENCHMARK(headlessStart)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
