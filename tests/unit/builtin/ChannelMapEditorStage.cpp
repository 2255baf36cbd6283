#include "ChannelMapEditorStage.h"

namespace zeltests {

using zelaudiofilterhostui::AudioFilterChannelMapEditorView;
using zelui::controls::UI_Popup;
using zelui::controls::UI_StaticText;
using zelui::controls::UI_TextButton;

namespace {

constexpr std::size_t kHeaders = 4;

}  // namespace

ChannelMapEditorStage::ChannelMapEditorStage(const FilterPtr& filter, const std::string& track,
                                             const std::string& sideChain, const std::string& sideChainName)
    : mFilter(filter) {
    SetTrack(track, sideChain, sideChainName);
    MakeView();
}

ChannelMapEditorStage::ChannelMapEditorStage(const FilterPtr& filter) : mFilter(filter) { MakeView(); }

ChannelMapEditorStage::~ChannelMapEditorStage() = default;

void ChannelMapEditorStage::MakeView() {
    mView = AudioFilterChannelMapEditorView::Create(mFilter, zelui::drawbot::SupplierInterface::GetDefault());
    mView->GetChannelMapChangedInteractivelySignal().connect(
        [this](const ChannelMap& inputBefore, const ChannelMap& inputAfter, const ChannelMap& outputBefore,
               const ChannelMap& outputAfter) {
            mTold.push_back({inputBefore, inputAfter, outputBefore, outputAfter});
        });
}

void ChannelMapEditorStage::SetTrack(const std::string& track, const std::string& sideChain,
                                     const std::string& sideChainName) {
    mFilter->SetTargetFormat(zelmediatypes::MakeChannelLayoutForName(track), Aux(sideChainName, sideChain));
}

void ChannelMapEditorStage::Show() {
    mArea = std::make_unique<QScrollArea>();
    mArea->setWidget(new zelui::qt::NodeWidget(mView));
    mArea->resize(900, 500);
    mArea->show();
    mArea->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(mArea.get()));
}

std::vector<UI_StaticText*> ChannelMapEditorStage::GetHeaders() {
    std::vector<UI_StaticText*> headers;
    for (std::size_t i = 0; i < kHeaders; ++i) headers.push_back(dynamic_cast<UI_StaticText*>(mView->ChildAt(i).get()));
    return headers;
}

std::vector<ChannelMapEditorStage::Row> ChannelMapEditorStage::GetRows() {
    std::vector<Row> rows;
    for (std::size_t i = kHeaders; i + 1 < mView->ChildCount();) {
        Row row;
        row.text = dynamic_cast<UI_StaticText*>(mView->ChildAt(i).get());
        row.input = dynamic_cast<UI_Popup*>(mView->ChildAt(i + 1).get());
        row.output = dynamic_cast<UI_Popup*>(mView->ChildAt(i + 2).get());
        i += 2;
        if (row.output != nullptr) {
            row.right = dynamic_cast<UI_StaticText*>(mView->ChildAt(i + 1).get());
            i += 2;
        }
        if (row.text == nullptr || row.input == nullptr || (row.output != nullptr && row.right == nullptr))
            throw std::logic_error("a row is not made of what rows are made of");
        rows.push_back(row);
    }
    return rows;
}

UI_TextButton& ChannelMapEditorStage::GetButton() {
    return dynamic_cast<UI_TextButton&>(*mView->ChildAt(mView->ChildCount() - 1));
}

std::string ChannelMapEditorStage::Read(std::size_t index) {
    const Row row = GetRows().at(index);
    std::string text = Utf8(row.text->GetValue()) + " | " + Utf8(row.input->GetValueString());
    if (row.output != nullptr) text += " | " + Utf8(row.output->GetValueString()) + " | " + Utf8(row.right->GetValue());
    return text;
}

std::vector<std::string> ChannelMapEditorStage::GetItems(const UI_Popup& popup) {
    std::vector<std::string> items;
    for (int i = 0; i < popup.GetItemCount(); ++i) items.push_back(Utf8(popup.GetItemText(i)));
    return items;
}

void ChannelMapEditorStage::Open(UI_Popup& popup) {
    QTest::mouseClick(&GetCombo(popup), Qt::LeftButton);
    ASSERT_TRUE(ProcessEventsUntil([&popup] { return GetCombo(popup).view()->isVisible(); }));
}

// By keys, as a mouse release right after opening is taken for that of the opening.
void ChannelMapEditorStage::Choose(UI_Popup& popup, int item) {
    Open(popup);
    QAbstractItemView* const list = GetCombo(popup).view();
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < item; ++i) QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
}

void ChannelMapEditorStage::PressReset() { QTest::mouseClick(zelui::qt::GetWidget(GetButton()), Qt::LeftButton); }

}  // namespace zeltests
