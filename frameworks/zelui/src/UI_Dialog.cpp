#include <utility>

#include <zelui/UI_Dialog.h>

#include "UI_DialogPeer.h"

namespace zelui {
namespace ui {

UI_Dialog::UI_Dialog(std::unique_ptr<Peer> peer) : mPeer(std::move(peer)) { mPeer->SetOwner(this); }

UI_Dialog::~UI_Dialog() = default;

void UI_Dialog::SetPostCloseCallback(const PostCloseCallback& callback) { mPeer->SetPostCloseCallback(callback); }

void UI_Dialog::UI_ShowModeless() { mPeer->ShowModeless(); }

UI_Dialog::Response UI_Dialog::UI_RunModal() { return mPeer->RunModal(); }

void UI_Dialog::UI_Close(Response response) { mPeer->Close(response); }

void UI_Dialog::UI_IdleUpdate() { mPeer->IdleUpdate(); }

bool UI_Dialog::UI_IsOpen() const { return mPeer->IsOpen(); }

HWND UI_Dialog::UI_GetPlatformWindow() const { return mPeer->GetPlatformWindow(); }

}  // namespace ui
}  // namespace zelui
