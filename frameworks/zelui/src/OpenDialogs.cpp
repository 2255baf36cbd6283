#include "OpenDialogs.h"

#include <vector>

namespace zelui {

namespace {

std::vector<OpenDialog*>& GetList() {
    static std::vector<OpenDialog*> list;
    return list;
}

}  // namespace

void OpenDialogs::Add(OpenDialog* dialog) { GetList().push_back(dialog); }

void OpenDialogs::Remove(OpenDialog* dialog) { std::erase(GetList(), dialog); }

bool OpenDialogs::CancelInnermost() {
    const std::vector<OpenDialog*>& list = GetList();
    for (auto dialog = list.rbegin(); dialog != list.rend(); ++dialog) {
        if ((*dialog)->Cancel()) return true;
    }
    return false;
}

void OpenDialogs::AbandonAll() {
    while (!GetList().empty()) {
        OpenDialog* const last = GetList().back();
        GetList().pop_back();
        last->Abandon();
    }
}

}  // namespace zelui
