#include <cmath>

#include <gtest/gtest.h>
#include <zelui/Theme.h>

#include "ChannelMapEditorStage.h"

namespace zeltests {

using zelaudiofilterhost::AudioFilterBusList;
using zelcore::geom::RectF;
using zelui::controls::UI_Popup;
using zelui::controls::UI_TextButton;
using zelui::drawbot::SupplierInterface;

namespace {

float Measure(const zelcore::ustring& text) {
    return SupplierInterface::GetDefault()->NewFont(zelui::ui::GetFontName(0), 0, 11.0f)->GetStringWidth(text);
}

float GetWidest(const std::vector<std::string>& texts) {
    float width = 0.0f;
    for (const std::string& text : texts) width = std::max(width, Measure(U(text)));
    return std::ceil(width);
}

/// How wide a popup has to be for its items and for "Bypass".
float GetPopupWidth(const UI_Popup& popup) {
    const boost::intrusive_ptr<UI_Popup> copy(new UI_Popup(zelui::controls::kPopupChoice, false));
    for (int i = 0; i < popup.GetItemCount(); ++i) copy->AddItem(popup.GetItemText(i));
    copy->AddItem(U("Bypass"));
    const auto drawbot = SupplierInterface::GetDefault()->NewDrawbot(1, 1, 1);
    float width = copy->UI_GetRecommendedSize(*drawbot).x;
    for (int i = 0; i < popup.GetItemCount(); ++i) width = std::max(width, Measure(popup.GetItemText(i)));
    return width;
}

/// Checks every frame of the view against the texts that it shows.
void ExpectLayout(ChannelMapEditorStage& stage) {
    std::vector<std::string> names = {"Channel"};
    std::vector<std::string> rightNames = {"Channel"};
    float popup = std::max(Measure(U("Effect Input")), Measure(U("Effect Output")));
    const auto rows = stage.GetRows();
    for (const auto& row : rows) {
        names.push_back(Utf8(row.text->GetValue()));
        popup = std::max(popup, GetPopupWidth(*row.input));
        if (row.output == nullptr) continue;
        rightNames.push_back(Utf8(row.right->GetValue()));
        popup = std::max(popup, GetPopupWidth(*row.output));
    }
    popup = std::ceil(popup);
    const float channel = GetWidest(names);
    const float right = GetWidest(rightNames);
    const float input = 10 + channel + 6;
    const float output = input + popup + 6;
    const float last = output + popup + 6;

    const auto headers = stage.GetHeaders();
    EXPECT_EQ(headers[0]->UI_GetLocalRectF(), (RectF{10, 10, channel, 20}));
    EXPECT_EQ(headers[1]->UI_GetLocalRectF(), (RectF{input, 10, popup, 20}));
    EXPECT_EQ(headers[2]->UI_GetLocalRectF(), (RectF{output, 10, popup, 20}));
    EXPECT_EQ(headers[3]->UI_GetLocalRectF(), (RectF{last, 10, right, 20}));
    float top = 32;
    for (const auto& row : rows) {
        EXPECT_EQ(row.text->UI_GetLocalRectF(), (RectF{10, top, channel, 20}));
        EXPECT_EQ(row.input->UI_GetLocalRectF(), (RectF{input - 2, top, popup, 20}));
        if (row.output != nullptr) {
            EXPECT_EQ(row.output->UI_GetLocalRectF(), (RectF{output - 2, top, popup, 20}));
            EXPECT_EQ(row.right->UI_GetLocalRectF(), (RectF{last, top, right, 20}));
        }
        top += 22;
    }
    const zelcore::geom::PointF size =
        UI_TextButton::UI_GetRecommendedSize(SupplierInterface::GetDefault(), U("Reset Routing"), 11.0f);
    EXPECT_EQ(stage.GetButton().UI_GetLocalRectF(), (RectF{last + right - size.x, top + 10, size.x, size.y}));
    EXPECT_EQ(stage.GetView().UI_GetLocalRectF(), (RectF{0, 0, last + right + 20, top + 10 + size.y + 20}));
    for (std::size_t i = 0; i < stage.GetView().ChildCount(); ++i)
        EXPECT_TRUE(stage.GetView().ChildAt(i)->UI_IsShown()) << i;
}

FilterPtr MakeFilter(const AudioFilterBusList& inputs, const AudioFilterBusList& outputs) {
    const FilterPtr filter(new AudioFilterDouble);
    filter->SetBuses(inputs, outputs);
    return filter;
}

}  // namespace

TEST(ChannelMapEditorLayoutTest, Stereo) {
    ChannelMapEditorStage stage("stereo");
    ExpectLayout(stage);
}

TEST(ChannelMapEditorLayoutTest, StereoWithAMonoSideChainHasThreeLinesAndTheButtonBelow) {
    ChannelMapEditorStage stage("stereo", "mono");
    ExpectLayout(stage);
    const auto rows = stage.GetRows();
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].text->UI_GetLocalRectF().top, 32.0f);
    EXPECT_EQ(rows[1].text->UI_GetLocalRectF().top, 54.0f);
    EXPECT_EQ(rows[2].text->UI_GetLocalRectF().top, 76.0f);
    EXPECT_EQ(rows[2].output, nullptr);
    EXPECT_EQ(rows[2].right, nullptr);
    EXPECT_EQ(stage.GetButton().UI_GetLocalRectF().top, 108.0f);
}

TEST(ChannelMapEditorLayoutTest, Surround) {
    ChannelMapEditorStage stage(MakeFilter({Bus("", "5.1")}, {Bus("", "5.1")}), "5.1");
    ExpectLayout(stage);
}

TEST(ChannelMapEditorLayoutTest, SurroundWithHeightsAndAnUnlabelledSideChain) {
    ChannelMapEditorStage stage(MakeFilter({Bus("", "7.1.4")}, {Bus("", "7.1.4")}), "7.1.4", "2", "Key");
    ExpectLayout(stage);
    EXPECT_EQ(stage.GetRows().size(), 14u);
}

TEST(ChannelMapEditorLayoutTest, SeveralBusesWithAndWithoutNames) {
    ChannelMapEditorStage stage(
        MakeFilter({Bus("The one main input of all", "stereo"), Aux("", "4")}, {Bus("", "mono"), Bus("Out", "mono")}),
        "stereo", "4", "Key");
    ExpectLayout(stage);
}

TEST(ChannelMapEditorLayoutTest, AnotherFormatIsLaidOutAnew) {
    ChannelMapEditorStage stage("stereo");
    stage.SetTrack("7.1.4", "stereo", "A side-chain with a rather long name");
    ExpectLayout(stage);
    stage.SetTrack("mono");
    ExpectLayout(stage);
}

TEST(ChannelMapEditorLayoutTest, ALongSideChainNameWidensTheLeftColumnAlone) {
    ChannelMapEditorStage plain("stereo", "mono");
    ChannelMapEditorStage wide("stereo", "mono", "Everything that comes out of the kick drum");
    EXPECT_GT(wide.GetRows()[0].text->UI_GetLocalRectF().width, plain.GetRows()[0].text->UI_GetLocalRectF().width);
    EXPECT_EQ(wide.GetRows()[0].right->UI_GetLocalRectF().width, plain.GetRows()[0].right->UI_GetLocalRectF().width);
    ExpectLayout(wide);
}

TEST(ChannelMapEditorLayoutTest, APopupOfShorterItemsStillHasRoomForBypass) {
    ChannelMapEditorStage stage(MakeFilter({Bus("", "1")}, {}), "mono");
    const boost::intrusive_ptr<UI_Popup> popup(new UI_Popup(zelui::controls::kPopupChoice, false));
    popup->AddItem(U("Bypass"));
    const auto drawbot = SupplierInterface::GetDefault()->NewDrawbot(1, 1, 1);
    EXPECT_GE(stage.GetRows()[0].output->UI_GetLocalRectF().width, popup->UI_GetRecommendedSize(*drawbot).x);
    EXPECT_EQ(stage.GetRows()[0].output->GetItemCount(), 2);
    EXPECT_EQ(Utf8(stage.GetRows()[0].output->GetValueString()), "(None)");
}

TEST(ChannelMapEditorLayoutTest, BothPopupColumnsAreAsWideAsTheWiderOne) {
    ChannelMapEditorStage stage(
        MakeFilter({Bus("A very long name of an input bus", "stereo"), Bus("Another", "stereo")}, {Bus("", "mono")}),
        "stereo");
    const auto rows = stage.GetRows();
    EXPECT_EQ(rows[0].input->UI_GetLocalRectF().width, rows[0].output->UI_GetLocalRectF().width);
    EXPECT_GT(rows[0].output->UI_GetLocalRectF().width, Measure(U("A very long name of an input bus: Left")));
    ExpectLayout(stage);
}

TEST(ChannelMapEditorLayoutTest, WithoutASupplierNothingIsMeasured) {
    const FilterPtr filter(new AudioFilterDouble);
    filter->SetTargetFormat(zelmediatypes::MakeChannelLayoutForName("stereo"), Aux("", ""));
    const auto view = zelaudiofilterhostui::AudioFilterChannelMapEditorView::Create(filter, nullptr);
    EXPECT_EQ(view->UI_GetDrawSupplier(), nullptr);
    EXPECT_EQ(view->ChildAt(0)->UI_GetLocalRectF(), (RectF{10, 10, 0, 20}));
    EXPECT_EQ(view->UI_GetLocalRectF(), (RectF{0, 0, 48, 106}));
}

TEST(ChannelMapEditorLayoutTest, TheGivenSupplierServesUntilTheNodeHasOneOfItsOwn) {
    const FilterPtr filter(new AudioFilterDouble);
    const auto view = zelaudiofilterhostui::AudioFilterChannelMapEditorView::Create(filter, nullptr);
    const zelui::qt::NodeWidget widget(view);
    EXPECT_EQ(view->UI_GetDrawSupplier(), SupplierInterface::GetDefault());
    ChannelMapEditorStage stage("stereo");
    EXPECT_EQ(stage.GetView().UI_GetDrawSupplier(), SupplierInterface::GetDefault());
}

TEST(ChannelMapEditorLayoutTest, TheWidgetsStandOnTheFrames) {
    ChannelMapEditorStage stage("stereo", "mono", "Key");
    stage.Show();
    for (std::size_t i = 0; i < stage.GetView().ChildCount(); ++i) {
        const zelui::ui::UI_Node& node = *stage.GetView().ChildAt(i);
        const RectF frame = node.UI_GetLocalRectF();
        const QWidget* const widget = zelui::qt::GetWidget(node);
        ASSERT_NE(widget, nullptr) << i;
        EXPECT_EQ(widget->geometry(),
                  QRectF(double(frame.left), double(frame.top), double(frame.width), double(frame.height)).toRect())
            << i;
    }
}

}  // namespace zeltests
