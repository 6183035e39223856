#include "measure.h"

#include <time.h>

#include <algorithm>

namespace pxl::bench {
namespace {

constexpr double kSeriesSeconds = 0.001;  // long against the clock's own cost, short against the machine's drift
constexpr std::size_t kMinimumRounds = 7, kMaximumRounds = 200;

// Processor time of this thread: what other programs take meanwhile does not count. (Nobody here starts threads.)
double now() {
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

double secondsOf(const Contender& contender, int runs) {
    contender.prepare();
    const double start = now();
    for (int i = 0; i < runs; ++i) contender.run();
    return (now() - start) / runs;
}

}  // namespace

double median(std::vector<double> values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void measure(std::vector<Contender>& contenders, double seconds) {
    struct Record {
        int runs;
        std::vector<double> rounds;
        double spent = 0;
    };
    std::vector<Record> records;
    for (const Contender& contender : contenders) {
        secondsOf(contender, 1);  // touches the memory, lets the contender set itself up
        const double once = std::max(secondsOf(contender, 1), 1e-9);
        records.push_back({std::clamp(static_cast<int>(kSeriesSeconds / once) + 1, 1, contender.maximumRuns), {}});
    }
    const double share = seconds / static_cast<double>(contenders.size());
    bool someoneHasTime = true;
    for (std::size_t round = 0; someoneHasTime && round < kMaximumRounds; ++round) {
        someoneHasTime = false;
        for (std::size_t turn = 0; turn < contenders.size(); ++turn) {
            const std::size_t i = (round + turn) % contenders.size();  // nobody always follows the same one
            Record& record = records[i];
            if (round >= kMinimumRounds && record.spent > share) continue;
            record.rounds.push_back(secondsOf(contenders[i], record.runs));
            record.spent += record.rounds.back() * record.runs;
            someoneHasTime = true;
        }
    }
    for (std::size_t i = 0; i < contenders.size(); ++i) {
        contenders[i].seconds = *std::ranges::min_element(records[i].rounds);
        contenders[i].spread = median(records[i].rounds) / contenders[i].seconds - 1;
    }
}

}  // namespace pxl::bench
