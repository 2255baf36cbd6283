#include "Processes.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <unistd.h>

namespace zelfaults {

namespace {

std::string Read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::string ReadName(pid_t process) {
    const std::string name = Read("/proc/" + std::to_string(process) + "/comm");
    return name.substr(0, name.find('\n'));
}

}  // namespace

std::vector<pid_t> Processes::FindWith(const std::string& text) {
    std::vector<pid_t> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string number = entry.path().filename().string();
        if (!std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; })) continue;
        const pid_t process = static_cast<pid_t>(std::stol(number));
        if (process != getpid() && Read(entry.path() / "environ").find(text) != std::string::npos)
            found.push_back(process);
    }
    return found;
}

std::vector<pid_t> Processes::FindWith(const std::string& text, const std::string& name) {
    std::vector<pid_t> found = FindWith(text);
    std::erase_if(found, [&](pid_t process) { return !ReadName(process).starts_with(name); });
    return found;
}

void Processes::Kill(const std::vector<pid_t>& processes) {
    for (const pid_t process : processes) kill(process, SIGKILL);
}

std::string Processes::Describe(const std::vector<pid_t>& processes) {
    std::string text;
    for (const pid_t process : processes) text += " " + ReadName(process) + " (" + std::to_string(process) + ")";
    return text;
}

}  // namespace zelfaults
