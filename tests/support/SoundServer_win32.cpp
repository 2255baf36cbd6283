#include <gtest/gtest.h>

#include "support/SoundServer.h"

namespace zeltests {

// There is no sound server that a test could have of its own; tests skip themselves.
SoundServer::SoundServer() = default;

SoundServer::~SoundServer() = default;

void SoundServer::AddDevice(const std::string& name) { ADD_FAILURE() << "no device " << name; }

void SoundServer::RemoveDevices() { ADD_FAILURE() << "no devices"; }

std::unique_ptr<Program> SoundServer::Record(const std::string& device) {
    ADD_FAILURE() << "nothing to record from " << device;
    return nullptr;
}

int SoundServer::Control(const std::vector<std::string>&) { return -1; }

}  // namespace zeltests
