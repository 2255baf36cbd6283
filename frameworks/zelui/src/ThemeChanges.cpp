#include "ThemeChanges.h"

#include <algorithm>
#include <vector>

#include <zelui/Theme.h>

#include "ThemeWatch.h"

namespace zelui {
namespace ui {

namespace {

struct Observer {
    int id;
    std::function<void()> call;
};

struct Listeners {
    std::vector<Observer> observers;
    std::vector<boost::shared_ptr<ThemeChangedFunction>> functions;
    int lastId = 0;
    unsigned rounds = 0;
};

// Never destroyed: what the functions were bound to may have been unloaded by the end of the program.
Listeners& GetListeners() {
    static Listeners* const listeners = new Listeners;
    return *listeners;
}

void LetGoOfEmptied() {
    std::erase_if(GetListeners().functions,
                  [](const boost::shared_ptr<ThemeChangedFunction>& function) { return function->empty(); });
}

template <typename Function>
void Call(const Function& function, std::exception_ptr& thrown) {
    try {
        function();
    } catch (...) {
        if (!thrown) thrown = std::current_exception();
    }
}

bool IsKnown(int id) {
    const std::vector<Observer>& observers = GetListeners().observers;
    return std::any_of(observers.begin(), observers.end(), [id](const Observer& one) { return one.id == id; });
}

// Both go through copies: whoever is called may add to the lists and take from them.
void TellObservers(unsigned round, std::exception_ptr& thrown) {
    const std::vector<Observer> observers = GetListeners().observers;
    for (const Observer& observer : observers) {
        if (GetListeners().rounds != round) return;
        if (IsKnown(observer.id)) Call(observer.call, thrown);
    }
}

void CallFunctions(unsigned round, std::exception_ptr& thrown) {
    const std::vector<boost::shared_ptr<ThemeChangedFunction>> functions = GetListeners().functions;
    for (const boost::shared_ptr<ThemeChangedFunction>& function : functions) {
        if (GetListeners().rounds != round) return;
        // One that empties itself must not take away what is running.
        const ThemeChangedFunction running = *function;
        if (!running.empty()) Call(running, thrown);
    }
}

}  // namespace

int AddThemeObserver(const std::function<void()>& observer) {
    ThemeWatch::Get();
    Listeners& listeners = GetListeners();
    listeners.observers.push_back({++listeners.lastId, observer});
    return listeners.lastId;
}

void RemoveThemeObserver(int id) {
    std::erase_if(GetListeners().observers, [id](const Observer& one) { return one.id == id; });
}

void InstallThemeChangedFunction(const boost::shared_ptr<ThemeChangedFunction>& function) {
    ThemeWatch::Get();
    LetGoOfEmptied();
    std::vector<boost::shared_ptr<ThemeChangedFunction>>& functions = GetListeners().functions;
    if (function && std::find(functions.begin(), functions.end(), function) == functions.end())
        functions.push_back(function);
}

std::exception_ptr TellThemeChanged() {
    const unsigned round = ++GetListeners().rounds;
    std::exception_ptr thrown;
    LetGoOfEmptied();
    TellObservers(round, thrown);
    CallFunctions(round, thrown);
    LetGoOfEmptied();
    return thrown;
}

}  // namespace ui
}  // namespace zelui
