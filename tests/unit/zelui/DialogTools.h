#pragma once

#include <functional>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>
#include <zelui/UI_ProgressDialog.h>

#include "support/WaitFor.h"

namespace zeltests {

typedef boost::intrusive_ptr<zelui::dialogs::UI_ProgressDialog> ProgressDialogPtr;

inline zelcore::ustring U(const char* text) { return zelcore::utility::UTF8to16(text); }

inline ProgressDialogPtr MakeProgressDialog(bool cancellable = true, bool indeterminate = false,
                                            HWND parent = nullptr) {
    return new zelui::dialogs::UI_ProgressDialog(nullptr, U("Scanning"), U("Extra"), parent, indeterminate,
                                                 cancellable);
}

/// The widgets of an open dialog.
inline QWidget* GetWindow(const ProgressDialogPtr& dialog) {
    return zelui::qt::FindWidget(dialog->UI_GetPlatformWindow());
}
inline QLabel* GetExtraText(const ProgressDialogPtr& dialog) {
    return GetWindow(dialog)->findChild<QLabel*>("ProgressExtraText");
}
inline QProgressBar* GetBar(const ProgressDialogPtr& dialog) {
    return GetWindow(dialog)->findChild<QProgressBar*>("ProgressBar");
}
inline QPushButton* GetCancelButton(const ProgressDialogPtr& dialog) {
    return GetWindow(dialog)->findChild<QPushButton*>("CancelButton");
}

inline bool ProcessUntil(const std::function<bool()>& condition) {
    return WaitFor(condition, std::chrono::seconds(20), [] { QCoreApplication::processEvents(); });
}

/// Counts the events of one kind that an object gets.
class EventCounter final : public QObject {
public:
    EventCounter(QObject* watched, QEvent::Type type) : mType(type) { watched->installEventFilter(this); }
    int GetCount() const { return mCount; }

private:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == mType) ++mCount;
        return false;
    }

    QEvent::Type mType;
    int mCount = 0;
};

}  // namespace zeltests
