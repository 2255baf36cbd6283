// Disturbs scans in every way that it knows and looks what comes of it; prints a table. Exit code 0 when everything was
// survived.
//   fault_rounds [--rounds N] [--seed S] [--round NUMBER] [--kind TEXT] [--verbose]
// A seed says which rounds they are; --round runs one of them again. What happens at a step of the program happens
// again at the same step; what is killed at random is killed after as many milliseconds.

#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

#include "FaultRounds.h"

namespace {

bool Parse(zelfaults::FaultRounds::Options& options, int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string option = argv[i];
        if (option == "--verbose") {
            options.isVerbose = true;
            continue;
        }
        if (++i == argc) return false;
        if (option == "--rounds")
            options.rounds = std::strtoul(argv[i], nullptr, 10);
        else if (option == "--seed")
            options.seed = std::strtoul(argv[i], nullptr, 10);
        else if (option == "--round")
            options.only = std::strtol(argv[i], nullptr, 10);
        else if (option == "--kind")
            options.kind = argv[i];
        else
            return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    zelfaults::FaultRounds::Options options;
    options.seed = std::random_device()();
    if (!Parse(options, argc, argv)) {
        std::cerr << "usage: fault_rounds [--rounds N] [--seed S] [--round NUMBER] [--kind TEXT] [--verbose]\n";
        return 2;
    }
    return zelfaults::FaultRounds(options).Run() ? 0 : 1;
}
