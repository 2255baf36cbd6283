#include <zelaudiofilterhostui/Module.h>

#include <memory>

#include <zelui/OS_ResourceManager.h>

#include "views/ModuleState.h"

namespace zelaudiofilterhostui {

using zelui::utility::OS_ResourceManager;

namespace {

// Set before static initialisation, by the module's entry: it must not be initialised a second time.
constinit HINSTANCE sInstance = nullptr;

bool sInitialized = false;

std::unique_ptr<OS_ResourceManager>& GetResources() {
    static std::unique_ptr<OS_ResourceManager> resources;
    return resources;
}

}  // namespace

HINSTANCE GetModuleInstance() { return sInstance; }

void SetModuleInstance(HINSTANCE instance) { sInstance = instance; }

OS_ResourceManager* GetModuleResourceManager() { return GetResources().get(); }

bool Initialize() {
    if (sInitialized) return true;
    if (sInstance != nullptr) GetResources() = std::make_unique<OS_ResourceManager>(sInstance);
    sInitialized = true;
    return true;
}

void Terminate() {
    if (!sInitialized) return;
    GetResources().reset();
    sInitialized = false;
}

}  // namespace zelaudiofilterhostui
