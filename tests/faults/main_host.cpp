// An application that scans, for fault_rounds to disturb.
//   fault_host PROFILE prepare FOLDER…
//   fault_host PROFILE scan new|all separate|inside FOLDER
//   fault_host PROFILE look FOLDER

#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include <zelaudiofilterhostui/Module.h>
#include <zelui/Application.h>

#include "FaultHost.h"

namespace {

void Run(const std::vector<std::string>& words) {
    zelfaults::FaultHost host(words.at(0));
    const std::string& command = words.at(1);
    if (command == "prepare") host.Prepare(std::vector<std::string>(words.begin() + 2, words.end()));
    if (command == "scan") host.Scan(words.at(4), words.at(2) == "all", words.at(3) == "separate");
    if (command == "look") host.Look(words.at(2));
}

}  // namespace

int main(int argc, char** argv) {
    const zelui::Application application(argc, argv);
    zelaudiofilterhostui::Initialize();
    int code = 0;
    try {
        Run(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const std::exception& error) {
        std::cout << "error " << error.what() << std::endl;
        code = 1;
    }
    zelaudiofilterhostui::Terminate();
    return code;
}
