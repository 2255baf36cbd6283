// What a list of ten thousand rows costs to fill, to sort, to scroll and to keep. For the price of a fill there is one
// of a bare table view with the same number of rows beside it, and of its sorting.
#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <benchmark/benchmark.h>
#include <QAbstractTableModel>
#include <QApplication>
#include <QScrollBar>
#include <QTableView>

#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_MultiColumnTree.h>
#include <zelui/UI_MultiColumnTreeHeaderRow.h>
#include <zelui/UI_SubView.h>

namespace {

using zelui::controls::UI_Checkbox;
using zelui::controls::UI_MultiColumnTree;
using zelui::controls::UI_MultiColumnTreeHeaderRow;
typedef UI_MultiColumnTree::RowPtr RowPtr;

constexpr int kRows = 10000;

// Sixty characters, as long paths have, in no order.
std::string PathOf(int number) {
    const int mixed = static_cast<int>(static_cast<unsigned>(number) * 7919u % kRows);
    std::string path = "/usr/lib/vst3/Some Vendor/Effects/Plug-In " + std::to_string(mixed);
    path.resize(60, 'x');
    return path;
}

std::vector<zelcore::ustring> MakePaths() {
    std::vector<zelcore::ustring> paths;
    for (int i = 0; i < kRows; ++i) paths.push_back(zelcore::utility::UTF8to16(PathOf(i)));
    return paths;
}

/// A list in a window, with a check box in each row that can be seen.
class ShownTree {
public:
    ShownTree() : mPaths(MakePaths()), mRoot(new zelui::ui::UI_SubView), mTree(new UI_MultiColumnTree) {
        mRoot->UI_SetLocalRectF({0, 0, 700, 500});
        mTree->UI_SetLocalRectF({0, 0, 700, 500});
        mTree->UI_Show(true);
        mHeader.reset(new UI_MultiColumnTreeHeaderRow(*mTree));
        for (UI_MultiColumnTreeHeaderRow::ColumnID id = 1; id <= 5; ++id)
            mHeader->AppendColumn(zelcore::utility::UTF8to16("Column"), id);
        mTree->SetRowVisibilityChangedCallback([this](const RowPtr& row) {
            if (!mTree->IsRowVisible(row)) return;
            const boost::intrusive_ptr<UI_Checkbox> box(new UI_Checkbox);
            box->UI_SetLocalRectF({0, 3, 200, 14});
            box->UI_Show(true);
            row->GetCellView(0)->ChildPushBack(box);
        });
        mTree->SetCellSortDataFunction([this](const RowPtr& row, int) { return mPaths[mKeys[row.get()]]; });
        mRoot->ChildPushBack(mTree);
        mWidget = std::make_unique<zelui::qt::NodeWidget>(mRoot);
        mWidget->show();
        Process();
    }

    void Fill() {
        mTree->RemoveAllRows();
        for (int i = 0; i < kRows; ++i) mTree->CreateAndAppendRow(i + 1 == kRows);
    }
    void FillKeys() {
        mKeys.clear();
        for (std::size_t i = 0; i < mTree->GetRowCount(); ++i) mKeys[mTree->GetRowAt(i).get()] = i;
        mHeader->SetSortColumn(2);
    }
    void Process() {
        for (int i = 0; i < 3; ++i) {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
    UI_MultiColumnTree& GetTree() { return *mTree; }
    QTableView& GetTable() { return static_cast<QTableView&>(*zelui::qt::GetWidget(*mTree)); }

private:
    const std::vector<zelcore::ustring> mPaths;
    std::unordered_map<const void*, std::size_t> mKeys;
    boost::intrusive_ptr<zelui::ui::UI_SubView> mRoot;
    boost::intrusive_ptr<UI_MultiColumnTree> mTree;
    boost::intrusive_ptr<UI_MultiColumnTreeHeaderRow> mHeader;
    std::unique_ptr<zelui::qt::NodeWidget> mWidget;
};

class BareModel final : public QAbstractTableModel {
public:
    int rowCount(const QModelIndex&) const override { return mRows; }
    int columnCount(const QModelIndex&) const override { return 5; }
    QVariant data(const QModelIndex&, int) const override { return QVariant(); }
    void Set(int rows) {
        beginResetModel();
        mRows = rows;
        endResetModel();
    }

private:
    int mRows = 0;
};

void FillTree(benchmark::State& state) {
    ShownTree shown;
    for (auto _ : state) shown.Fill();
    state.counters["rows"] = kRows;
}
BENCHMARK(FillTree)->Unit(benchmark::kMillisecond);

void FillAndShowTree(benchmark::State& state) {
    ShownTree shown;
    for (auto _ : state) {
        shown.Fill();
        shown.Process();
    }
}
BENCHMARK(FillAndShowTree)->Unit(benchmark::kMillisecond);

void FillAndShowBareTable(benchmark::State& state) {
    BareModel model;
    QTableView table;
    table.setModel(&model);
    table.resize(700, 500);
    table.show();
    for (auto _ : state) {
        model.Set(0);
        model.Set(kRows);
        for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
    }
}
BENCHMARK(FillAndShowBareTable)->Unit(benchmark::kMillisecond);

void SortTree(benchmark::State& state) {
    ShownTree shown;
    for (auto _ : state) {
        state.PauseTiming();
        shown.Fill();
        shown.FillKeys();
        state.ResumeTiming();
        shown.GetTree().SortTree();
    }
}
BENCHMARK(SortTree)->Unit(benchmark::kMillisecond);

// The plainest sort of the same keys, by their units alone.
void SortBareKeys(benchmark::State& state) {
    const std::vector<zelcore::ustring> paths = MakePaths();
    for (auto _ : state) {
        std::vector<zelcore::ustring> sorted = paths;
        std::sort(sorted.begin(), sorted.end());
        benchmark::DoNotOptimize(sorted);
    }
}
BENCHMARK(SortBareKeys)->Unit(benchmark::kMillisecond);

void ScrollTreeByPage(benchmark::State& state) {
    ShownTree shown;
    shown.Fill();
    shown.Process();
    QScrollBar* const bar = shown.GetTable().verticalScrollBar();
    for (auto _ : state) {
        bar->setValue(bar->value() + 500 > bar->maximum() ? 0 : bar->value() + 500);
        shown.Process();
    }
}
BENCHMARK(ScrollTreeByPage)->Unit(benchmark::kMillisecond);

void BytesPerRow(benchmark::State& state) {
    ShownTree shown;
    double bytes = 0;
    for (auto _ : state) {
        shown.GetTree().RemoveAllRows();
        shown.Process();
        const double before = static_cast<double>(mallinfo2().uordblks);
        shown.Fill();
        shown.Process();
        bytes = (static_cast<double>(mallinfo2().uordblks) - before) / kRows;
    }
    state.counters["bytes"] = bytes;
}
BENCHMARK(BytesPerRow)->Iterations(3)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
