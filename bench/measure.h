// Times several pieces of work against each other.
//
// Absolute times drift with the machine and its other programs; what this program wants are ratios. So the contenders
// of a comparison take turns within milliseconds, for many rounds, and each is judged by its best round. A framework
// that times one benchmark to its end before the next begins cannot do that, hence the few lines of our own.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace pxl::bench {

struct Contender {
    std::string name;
    std::function<void()> run;
    std::function<void()> prepare = [] {};  // not timed, before each series of runs
    int maximumRuns = 1 << 20;              // in a series

    double seconds = 0;  // result: one run in the best round
    double spread = 0;   // result: by how much the median round was slower than the best
};

// Runs all contenders by turns, seven rounds at least and then each as long as its equal share of `seconds` of
// processor time lasts: one that is slow by a factor does not take the rounds of the others.
void measure(std::vector<Contender>& contenders, double seconds);

double median(std::vector<double> values);

}  // namespace pxl::bench
