// What the plug-in manager costs with ten thousand plug-ins: to open it, to type a letter into its find box, to sort
// it, and how much memory a row takes. Beside each stands a bare QTableView with the same texts, behind a proxy that
// filters and sorts. Everything is painted, into memory; medians of several runs in one process.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <malloc.h>
#include <string>
#include <vector>

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QTemporaryDir>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/AudioPluginManager.h>
#include <zelaudiofilterhostui/Module.h>
#include <zelcore/Dir.h>
#include <zelcore/Threads.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>
#include <zelui/QtBridge.h>

#include "support/Table.h"

namespace {

using zelaudiofilterhost::PluginModuleInfo;
using zelaudiofilterhost::PluginModuleInfoManager;

constexpr int kPlugins = 10000;
constexpr int kRuns = 9;

std::string PathOf(int number) {
    return "/usr/lib/vst/some-vendor/effects/Plug-In " + std::to_string(number * 7919 % kPlugins) + ".so";
}
std::string NameOf(int number) { return "Effect " + std::to_string(number * 31 % kPlugins); }

void FillCatalogue() {
    for (int i = 0; i < kPlugins; ++i) {
        zelaudiofilterhost::PluginComponentInfo component;
        component.componentId = zelcore::utility::UTF8to16("VST-" + std::to_string(i));
        component.name = zelcore::utility::UTF8to16(NameOf(i));
        PluginModuleInfoManager::GetInstance().AddPluginInfo(
            new PluginModuleInfo(zelaudiofilterhost::PluginLocator(zelaudiofilterhost::kTechnologyVST,
                                                                   zelcore::utility::UTF8to16(PathOf(i))),
                                 component.name, zelaudiofilterhost::PluginFingerprint(), {component}));
    }
}

/// One run's figures, in milliseconds, and bytes for all rows.
struct Figures {
    double open = 0.0;
    double type = 0.0;
    double sort = 0.0;
    double memory = 0.0;
};

double Measure(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

double GetUsedMemory() { return static_cast<double>(mallinfo2().uordblks); }

void Paint(QWidget& window) {
    QApplication::processEvents();
    window.repaint();
}

void PressLetter(QWidget* field) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_9, Qt::NoModifier, QStringLiteral("9"));
    QCoreApplication::sendEvent(field, &press);
}

void ClickTitle(QHeaderView& header, int column) {
    const QPoint place(header.sectionViewportPosition(column) + header.sectionSize(column) / 2, header.height() / 2);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, place, header.viewport()->mapToGlobal(place), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(header.viewport(), &event);
    }
}

Figures RunDialog() {
    Figures figures;
    zelaudiofilterhostui::AudioPluginManagerSettings settings;
    const double before = GetUsedMemory();
    const auto begin = std::chrono::steady_clock::now();
    zelcore::threads::AsyncCallFromMainThread([&] {
        QWidget& window = *QApplication::activeModalWidget();
        Paint(window);
        figures.open = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
        figures.memory = GetUsedMemory() - before;
        QWidget* const list = window.findChild<QWidget*>("PluginList");
        QTableView* const table = qobject_cast<QTableView*>(list);
        QHeaderView& header = *(table != nullptr ? table : list->findChild<QTableView*>())->horizontalHeader();
        figures.sort = Measure([&] {
            ClickTitle(header, 4);
            Paint(window);
        });
        QWidget* const find = window.findChild<QWidget*>("FindTextEdit");
        find->setFocus();
        figures.type = Measure([&] {
            PressLetter(find);
            Paint(window);
        });
        zelui::Application::CancelActiveDialog();
    });
    zelaudiofilterhostui::AudioPluginManager::GetInstance().DoPluginManagerDialog(nullptr, settings, nullptr);
    return figures;
}

/// The same texts for a bare view.
class BareModel final : public QAbstractTableModel {
public:
    BareModel() {
        for (int i = 0; i < kPlugins; ++i) {
            mNames.append(QString::fromStdString(NameOf(i)));
            mPaths.append(QString::fromStdString(PathOf(i)));
        }
    }
    int rowCount(const QModelIndex&) const override { return kPlugins; }
    int columnCount(const QModelIndex&) const override { return 5; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::CheckStateRole && index.column() == 0) return Qt::Checked;
        if (role != Qt::DisplayRole) return QVariant();
        switch (index.column()) {
            case 1:
                return mNames[index.row()];
            case 2:
                return QStringLiteral("VST");
            case 3:
                return QStringLiteral("Working");
            case 4:
                return mPaths[index.row()];
            default:
                return QVariant();
        }
    }

private:
    QStringList mNames;
    QStringList mPaths;
};

Figures RunBareView() {
    Figures figures;
    const double before = GetUsedMemory();
    BareModel model;
    QSortFilterProxyModel proxy;
    QTableView view;
    figures.open = Measure([&] {
        proxy.setSourceModel(&model);
        proxy.setFilterKeyColumn(-1);
        view.setModel(&proxy);
        view.setSortingEnabled(false);
        view.resize(700, 300);
        view.show();
        Paint(view);
    });
    figures.memory = GetUsedMemory() - before;
    figures.sort = Measure([&] {
        proxy.sort(4);
        Paint(view);
    });
    figures.type = Measure([&] {
        proxy.setFilterFixedString("9");
        Paint(view);
    });
    return figures;
}

double GetMedian(const std::vector<Figures>& runs, double Figures::*member) {
    std::vector<double> values;
    for (const Figures& run : runs) values.push_back(run.*member);
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Print(const char* what, const char* unit, double own, double bare) {
    std::printf("%-28s %9.2f %9.2f %-6s ratio %.2f\n", what, own, bare, unit, own / bare);
    zelbench::AddTableRow(std::string("manager of 10000 plug-ins, ") + what, unit, own, "bare QTableView", bare);
}

}  // namespace

int main(int argc, char** argv) {
    // What is measured is the same on every machine, with a display or without.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const zelui::Application application(argc, argv);
    const QTemporaryDir folder;
    zelcore::filesupport::Dir::SetPrefDir(zelcore::filesupport::Dir(zelui::qt::FromQString(folder.path())));
    zelaudiofilterhostui::Initialize();
    FillCatalogue();
    const zelcore::filesupport::File catalogue(zelcore::filesupport::Dir::PrefDir(),
                                               PluginModuleInfoManager::GetInstance().GetSettingsFileName());
    PluginModuleInfoManager::GetInstance().SaveConfiguration(catalogue, true);
    std::vector<Figures> own;
    std::vector<Figures> bare;
    for (int i = 0; i < kRuns; ++i) {
        own.push_back(RunDialog());
        bare.push_back(RunBareView());
    }
    std::printf("%d plug-ins, median of %d       manager      bare view\n", kPlugins, kRuns);
    Print("open", "ms", GetMedian(own, &Figures::open), GetMedian(bare, &Figures::open));
    Print("a letter in the find box", "ms", GetMedian(own, &Figures::type), GetMedian(bare, &Figures::type));
    Print("sort by path", "ms", GetMedian(own, &Figures::sort), GetMedian(bare, &Figures::sort));
    Print("memory per row", "bytes", GetMedian(own, &Figures::memory) / kPlugins,
          GetMedian(bare, &Figures::memory) / kPlugins);
    zelaudiofilterhostui::Terminate();
}
