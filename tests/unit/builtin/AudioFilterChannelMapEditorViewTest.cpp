#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/Localizer.h>

#include "ChannelMapEditorStage.h"

namespace zeltests {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using zelaudiofilterhost::AudioFilter;
using zelui::controls::UI_Popup;

namespace {

// Items of a popup over stereo.
enum Item { kNone, kBlank, kLeft, kRight };

FilterPtr MakeFilter(const zelaudiofilterhost::AudioFilterBusList& inputs,
                     const zelaudiofilterhost::AudioFilterBusList& outputs) {
    const FilterPtr filter(new AudioFilterDouble);
    filter->SetBuses(inputs, outputs);
    return filter;
}

}  // namespace

// Rows

TEST(AudioFilterChannelMapEditorViewTest, EachChannelOfTheTrackHasARow) {
    ChannelMapEditorStage stage("stereo");
    ASSERT_THAT(stage.GetRows(), SizeIs(2));
    EXPECT_EQ(stage.Read(0), "Left | Left | Left | Left");
    EXPECT_EQ(stage.Read(1), "Right | Right | Right | Right");
}

TEST(AudioFilterChannelMapEditorViewTest, TheHeadersNameTheColumns) {
    ChannelMapEditorStage stage("stereo");
    std::vector<std::string> headers;
    for (const auto* header : stage.GetHeaders()) headers.push_back(Utf8(header->GetValue()));
    EXPECT_THAT(headers, ElementsAre("Channel", "Effect Input", "Effect Output", "Channel"));
    EXPECT_EQ(Utf8(stage.GetButton().GetText()), "Reset Routing");
}

TEST(AudioFilterChannelMapEditorViewTest, SideChainChannelsHaveAnInputPopupOnlyAndAreNumberedOnAfterTheMainOnes) {
    ChannelMapEditorStage stage("stereo", "2", "Key");
    ASSERT_THAT(stage.GetRows(), SizeIs(4));
    EXPECT_EQ(stage.Read(2), "3 (Key) | (None)");
    EXPECT_EQ(stage.Read(3), "4 (Key) | (None)");
}

TEST(AudioFilterChannelMapEditorViewTest, ASideChainWithoutANameIsCalledOne) {
    ChannelMapEditorStage stage("stereo", "stereo");
    EXPECT_EQ(stage.Read(2), "Side Chain: Left | (None)");
    EXPECT_EQ(stage.Read(3), "Side Chain: Right | (None)");
}

TEST(AudioFilterChannelMapEditorViewTest, ASideChainsNameThatReadsLikeAPlaceholderStaysAName) {
    ChannelMapEditorStage stage("stereo", "mono", "@0@1");
    EXPECT_EQ(stage.Read(2), "Mono (@0@1) | (None)");
}

TEST(AudioFilterChannelMapEditorViewTest, UnlabelledChannelsOfTheTrackAreNumberedFromOne) {
    ChannelMapEditorStage stage("9");
    ASSERT_THAT(stage.GetRows(), SizeIs(9));
    EXPECT_EQ(stage.Read(0), "1 | Left | Left | 1");
    EXPECT_EQ(stage.Read(8), "9 | Bypass | Bypass | 9");
}

TEST(AudioFilterChannelMapEditorViewTest, ATrackWithoutChannelsHasNoRows) {
    ChannelMapEditorStage stage("");
    EXPECT_THAT(stage.GetRows(), IsEmpty());
    EXPECT_EQ(stage.GetButton().UI_GetLocalRectF().top, 42.0f);
}

TEST(AudioFilterChannelMapEditorViewTest, ASideChainAloneIsHarmless) {
    ChannelMapEditorStage stage("", "mono", "Key");
    EXPECT_EQ(stage.Read(0), "Mono (Key) | Bypass");
}

// Items

TEST(AudioFilterChannelMapEditorViewTest, TheItemsAreNoneABlankAndTheEffectsChannels) {
    ChannelMapEditorStage stage("stereo");
    EXPECT_THAT(ChannelMapEditorStage::GetItems(*stage.GetRows()[0].input), ElementsAre("(None)", "", "Left", "Right"));
}

TEST(AudioFilterChannelMapEditorViewTest, AnOnlyBusIsNotNamedEvenIfItHasAName) {
    ChannelMapEditorStage stage(MakeFilter({Bus("Main", "stereo")}, {Bus("Main", "2")}), "stereo");
    EXPECT_THAT(ChannelMapEditorStage::GetItems(*stage.GetRows()[0].input), ElementsAre("(None)", "", "Left", "Right"));
    EXPECT_THAT(ChannelMapEditorStage::GetItems(*stage.GetRows()[0].output), ElementsAre("(None)", "", "1", "2"));
}

TEST(AudioFilterChannelMapEditorViewTest, OfSeveralBusesThoseWithANameAreNamedAndChannelsNumberedWithinEach) {
    ChannelMapEditorStage stage(
        MakeFilter({Bus("Main", "stereo"), Aux("Key", "2"), Aux("", "2")}, {Bus("", "mono"), Bus("", "mono")}),
        "stereo");
    EXPECT_THAT(ChannelMapEditorStage::GetItems(*stage.GetRows()[0].input),
                ElementsAre("(None)", "", "Main: Left", "Main: Right", "Key: 1", "Key: 2", "1", "2"));
    EXPECT_THAT(ChannelMapEditorStage::GetItems(*stage.GetRows()[0].output), ElementsAre("(None)", "", "Mono", "Mono"));
}

TEST(AudioFilterChannelMapEditorViewTest, TextsFollowTheDictionary) {
    const ThrowAwayFolder folder;
    WriteFile(folder.Path("de.json"), R"json({"/zelaudiofilterhostui/ChannelMapEditor/ChannelNone": "(Keiner)",
        "/zelaudiofilterhostui/ChannelMapEditor/ChannelBypass": "Vorbei",
        "/zelaudiofilterhostui/ChannelMapEditor/Channel": "Kanal",
        "/zelaudiofilterhostui/channelmapeditor/SideChainName": "@1 (@0)"
})json");
    zelcore::config::Localizer::GetInstance().LoadDictionary(zelcore::filesupport::File(folder.UPath("de.json")));
    ChannelMapEditorStage stage("3.0", "mono", "Key");
    zelcore::config::Localizer::GetInstance().Clear();
    EXPECT_EQ(Utf8(stage.GetHeaders()[0]->GetValue()), "Kanal");
    EXPECT_EQ(Utf8(stage.GetHeaders()[3]->GetValue()), "Kanal");
    EXPECT_EQ(stage.Read(2), "Center | Vorbei | Vorbei | Center");
    EXPECT_EQ(stage.Read(3), "Key (Mono) | Vorbei");
    EXPECT_EQ(ChannelMapEditorStage::GetItems(*stage.GetRows()[0].input).front(), "(Keiner)");
}

// What popups show

TEST(AudioFilterChannelMapEditorViewTest, AChannelConnectedInNeitherDirectionReadsBypassInBothPopups) {
    ChannelMapEditorStage stage("3.0");
    EXPECT_EQ(stage.Read(2), "Center | Bypass | Bypass | Center");
    EXPECT_EQ(stage.GetRows()[2].input->GetValue(), 0);
    EXPECT_EQ(stage.GetRows()[2].output->GetValue(), 0);
}

TEST(AudioFilterChannelMapEditorViewTest, AChannelConnectedInOneDirectionOnlyReadsNoneInTheOther) {
    ChannelMapEditorStage stage("stereo");
    stage.Assign(AudioFilter::kOutput, 0, -1);
    EXPECT_EQ(stage.Read(0), "Left | Left | (None) | Left");
    stage.Assign(AudioFilter::kOutput, 0, 0);
    stage.Assign(AudioFilter::kInput, 0, -1);
    EXPECT_EQ(stage.Read(0), "Left | (None) | Left | Left");
    stage.Assign(AudioFilter::kOutput, 0, -1);
    EXPECT_EQ(stage.Read(0), "Left | Bypass | Bypass | Left");
}

TEST(AudioFilterChannelMapEditorViewTest, OfSeveralEffectChannelsThatReadOneTheLowerIsShown) {
    ChannelMapEditorStage stage("mono");
    EXPECT_EQ(stage.GetInputs(), (ChannelMap{{0, 0}, {1, 0}}));
    EXPECT_EQ(stage.Read(0), "Mono | Left | Left | Mono");
}

TEST(AudioFilterChannelMapEditorViewTest, ASideChainRowGoesByTheOutputOfTheLastMainRow) {
    ChannelMapEditorStage unconnected("3.0", "mono");
    EXPECT_EQ(unconnected.Read(2), "Center | Bypass | Bypass | Center");
    EXPECT_EQ(unconnected.Read(3), "Side Chain: Mono | Bypass");
    ChannelMapEditorStage connected("stereo", "mono");
    EXPECT_EQ(connected.Read(2), "Side Chain: Mono | (None)");
}

TEST(AudioFilterChannelMapEditorViewTest, EffectChannelsAreCountedAcrossBuses) {
    ChannelMapEditorStage stage(MakeFilter({Bus("Main", "stereo"), Aux("Key", "mono")}, {Bus("", "stereo")}), "stereo",
                                "mono", "Side");
    EXPECT_EQ(stage.Read(2), "Mono (Side) | Key: Mono");
    EXPECT_EQ(stage.GetRows()[2].input->GetValue(), 4);
}

// Choices

TEST(AudioFilterChannelMapEditorViewTest, AChoiceConnectsTheChannelAndIsToldWithTheMapsBeforeAndAfter) {
    ChannelMapEditorStage stage("3.0");
    stage.Show();
    ChannelMapEditorStage::Choose(*stage.GetRows()[2].input, kRight);
    const ChannelMap before{{0, 0}, {1, 1}};
    const ChannelMap after{{0, 0}, {1, 2}};
    EXPECT_EQ(stage.GetInputs(), after);
    EXPECT_EQ(stage.GetOutputs(), before);
    ASSERT_THAT(stage.GetTold(), SizeIs(1));
    EXPECT_THAT(stage.GetTold()[0], ElementsAre(before, after, before, before));
    EXPECT_EQ(stage.Read(1), "Right | (None) | Right | Right");
    EXPECT_EQ(stage.Read(2), "Center | Right | (None) | Center");
}

TEST(AudioFilterChannelMapEditorViewTest, AChoiceOfAnOutputIsMadeInTheOutputs) {
    ChannelMapEditorStage stage("stereo");
    stage.Show();
    ChannelMapEditorStage::Choose(*stage.GetRows()[0].output, kRight);
    EXPECT_EQ(stage.GetInputs(), (ChannelMap{{0, 0}, {1, 1}}));
    EXPECT_EQ(stage.GetOutputs(), (ChannelMap{{0, -1}, {1, 0}}));
    EXPECT_EQ(stage.Read(0), "Left | Left | Right | Left");
    EXPECT_EQ(stage.Read(1), "Right | Right | (None) | Right");
    ASSERT_THAT(stage.GetTold(), SizeIs(1));
}

TEST(AudioFilterChannelMapEditorViewTest, TheSideChainIsConnectedByItsPopup) {
    ChannelMapEditorStage stage("stereo", "mono");
    stage.Show();
    ChannelMapEditorStage::Choose(*stage.GetRows()[2].input, kLeft);
    EXPECT_EQ(stage.GetInputs(), (ChannelMap{{0, 2}, {1, 1}}));
    EXPECT_EQ(stage.Read(2), "Side Chain: Mono | Left");
}

TEST(AudioFilterChannelMapEditorViewTest, TheBlankItemChangesNothingAndTellsNobody) {
    ChannelMapEditorStage stage("stereo");
    stage.Show();
    const ChannelMap inputs = stage.GetInputs();
    ChannelMapEditorStage::Choose(*stage.GetRows()[0].input, kBlank);
    EXPECT_EQ(stage.GetRows()[0].input->GetValue(), kBlank);
    EXPECT_EQ(stage.GetInputs(), inputs);
    EXPECT_THAT(stage.GetTold(), IsEmpty());
}

TEST(AudioFilterChannelMapEditorViewTest, NoneDisconnects) {
    ChannelMapEditorStage stage("stereo");
    stage.Show();
    ChannelMapEditorStage::Choose(*stage.GetRows()[0].input, kNone);
    EXPECT_EQ(stage.GetInputs(), (ChannelMap{{0, -1}, {1, 1}}));
    EXPECT_EQ(stage.Read(0), "Left | (None) | Left | Left");
    ChannelMapEditorStage::Choose(*stage.GetRows()[0].output, kNone);
    EXPECT_EQ(stage.Read(0), "Left | Bypass | Bypass | Left");
    EXPECT_THAT(stage.GetTold(), SizeIs(2));
}

TEST(AudioFilterChannelMapEditorViewTest, NoneForAChannelThatIsNotConnectedChangesNothingAndTellsNobody) {
    ChannelMapEditorStage stage("3.0");
    stage.Show();
    const ChannelMap inputs = stage.GetInputs();
    UI_Popup& popup = *stage.GetRows()[2].input;
    ChannelMapEditorStage::Choose(popup, kNone);
    EXPECT_EQ(stage.GetInputs(), inputs);
    // By way of the blank, so that the choice is one.
    ChannelMapEditorStage::Choose(popup, kBlank);
    ChannelMapEditorStage::Choose(popup, kNone);
    EXPECT_EQ(popup.GetValue(), kNone);
    EXPECT_EQ(stage.GetInputs(), inputs);
    EXPECT_THAT(stage.GetTold(), IsEmpty());
}

TEST(AudioFilterChannelMapEditorViewTest, AChoiceThatLeavesTheMapsAsTheyWereIsNotTold) {
    ChannelMapEditorStage stage("stereo");
    stage.Show();
    UI_Popup& popup = *stage.GetRows()[0].input;
    ChannelMapEditorStage::Choose(popup, kBlank);
    ChannelMapEditorStage::Choose(popup, kLeft);
    EXPECT_EQ(stage.Read(0), "Left | Left | Left | Left");
    EXPECT_THAT(stage.GetTold(), IsEmpty());
}

TEST(AudioFilterChannelMapEditorViewTest, ResetGoesBackToTheBestFitWithTheSideChainConnected) {
    ChannelMapEditorStage stage(MakeFilter({Bus("Main", "stereo"), Aux("Key", "mono")}, {Bus("", "stereo")}), "stereo",
                                "mono");
    stage.Show();
    const ChannelMap inputs = stage.GetInputs();
    const ChannelMap outputs = stage.GetOutputs();
    EXPECT_EQ(inputs, (ChannelMap{{0, 0}, {1, 1}, {2, 2}}));
    stage.Assign(AudioFilter::kInput, 0, 1);
    stage.Assign(AudioFilter::kInput, 2, -1);
    stage.Assign(AudioFilter::kOutput, 1, 0);
    const ChannelMap inputsBefore = stage.GetInputs();
    const ChannelMap outputsBefore = stage.GetOutputs();
    stage.PressReset();
    EXPECT_EQ(stage.GetInputs(), inputs);
    EXPECT_EQ(stage.GetOutputs(), outputs);
    ASSERT_THAT(stage.GetTold(), SizeIs(1));
    EXPECT_THAT(stage.GetTold()[0], ElementsAre(inputsBefore, inputs, outputsBefore, outputs));
    EXPECT_EQ(stage.Read(2), "Side Chain: Mono | Key: Mono");
}

TEST(AudioFilterChannelMapEditorViewTest, ResetOfABestFitIsNotTold) {
    ChannelMapEditorStage stage("stereo", "mono");
    stage.Show();
    stage.PressReset();
    EXPECT_THAT(stage.GetTold(), IsEmpty());
}

// Changes from elsewhere

TEST(AudioFilterChannelMapEditorViewTest, ChangesFromElsewhereAreShownAndNotTold) {
    ChannelMapEditorStage stage("stereo");
    stage.GetFilter().SetChannelMap({{0, 1}, {1, 0}}, AudioFilter::kInput);
    EXPECT_EQ(stage.Read(0), "Left | Right | Left | Left");
    EXPECT_EQ(stage.Read(1), "Right | Left | Right | Right");
    EXPECT_THAT(stage.GetTold(), IsEmpty());
}

TEST(AudioFilterChannelMapEditorViewTest, TwoEditorsOfOneFilterShowTheSameAndOnlyTheUsedOneTells) {
    ChannelMapEditorStage first("stereo");
    ChannelMapEditorStage second(first.GetFilterPtr());
    first.Show();
    second.Show();
    ChannelMapEditorStage::Choose(*second.GetRows()[0].input, kRight);
    EXPECT_EQ(first.Read(0), "Left | Right | Left | Left");
    EXPECT_EQ(first.Read(1), "Right | (None) | Right | Right");
    EXPECT_EQ(second.Read(0), first.Read(0));
    EXPECT_THAT(first.GetTold(), IsEmpty());
    EXPECT_THAT(second.GetTold(), SizeIs(1));
    second.GetViewPtr()->UI_SetDisabled(true);
    first.PressReset();
    EXPECT_EQ(second.Read(0), "Left | Left | Left | Left");
}

TEST(AudioFilterChannelMapEditorViewTest, AnotherTrackFormatMakesOtherRowsAndTellsTheSizeOnce) {
    ChannelMapEditorStage stage("stereo");
    int told = 0;
    stage.GetView().GetContentSizeChangedSignal().connect([&told] { ++told; });
    stage.SetTrack("5.1", "mono", "Key");
    ASSERT_THAT(stage.GetRows(), SizeIs(7));
    EXPECT_EQ(stage.Read(3), "LFE | Bypass | Bypass | LFE");
    EXPECT_EQ(stage.Read(6), "Mono (Key) | Bypass");
    EXPECT_EQ(told, 1);
    EXPECT_EQ(stage.GetButton().UI_GetLocalRectF().top, 32.0f + 7 * 22.0f + 10.0f);
    const zelcore::geom::RectF button = stage.GetButton().UI_GetLocalRectF();
    EXPECT_EQ(stage.GetView().UI_GetLocalRectF(),
              (zelcore::geom::RectF{0, 0, button.left + button.width + 20, button.top + button.height + 20}));
    EXPECT_THAT(stage.GetTold(), IsEmpty());
}

TEST(AudioFilterChannelMapEditorViewTest, AnotherSideChainNameAloneMakesOtherRows) {
    ChannelMapEditorStage stage("stereo", "mono", "Key");
    int told = 0;
    stage.GetView().GetContentSizeChangedSignal().connect([&told] { ++told; });
    stage.SetTrack("stereo", "mono", "Voice");
    EXPECT_EQ(stage.Read(2), "Mono (Voice) | (None)");
    EXPECT_EQ(told, 1);
}

TEST(AudioFilterChannelMapEditorViewTest, ASignalThatBringsTheSameFormatRebuildsNothing) {
    ChannelMapEditorStage stage("stereo", "mono");
    int told = 0;
    stage.GetView().GetContentSizeChangedSignal().connect([&told] { ++told; });
    const UI_Popup* const popup = stage.GetRows()[0].input;
    const boost::intrusive_ptr<zelui::ui::UI_Node> held = stage.GetView().ChildAt(5);
    stage.GetFilter().GetTargetFormatChangedSignal()();
    EXPECT_EQ(stage.GetRows()[0].input, popup);
    EXPECT_EQ(told, 0);
}

TEST(AudioFilterChannelMapEditorViewTest, AFormatThatChangesWhileAPopupIsOpenIsHarmless) {
    ChannelMapEditorStage stage("stereo");
    stage.Show();
    ChannelMapEditorStage::Open(*stage.GetRows()[1].output);
    stage.SetTrack("mono");
    ASSERT_TRUE(ProcessEventsUntil([] { return QApplication::activePopupWidget() == nullptr; }));
    EXPECT_EQ(stage.Read(0), "Mono | Left | Left | Mono");
    ChannelMapEditorStage::Choose(*stage.GetRows()[0].input, kRight);
    EXPECT_EQ(stage.GetInputs(), (ChannelMap{{0, -1}, {1, 0}}));
}

TEST(AudioFilterChannelMapEditorViewTest, AFormatThatIsChangedInAnswerToAChoiceIsHarmless) {
    ChannelMapEditorStage stage("stereo");
    stage.Show();
    stage.GetFilter().GetChannelMapChangedSignal().connect_extended(
        [&stage](const boost::signals2::connection& connection, AudioFilter::Direction, const ChannelMap&,
                 const ChannelMap&) {
            connection.disconnect();
            stage.SetTrack("mono");
        });
    ChannelMapEditorStage::Choose(*stage.GetRows()[0].input, kRight);
    EXPECT_EQ(stage.Read(0), "Mono | Left | Left | Mono");
}

TEST(AudioFilterChannelMapEditorViewTest, AFormatThatIsChangedInAnswerToAResetKeepsItsOwnMaps) {
    ChannelMapEditorStage stage("stereo");
    stage.Show();
    stage.GetFilter().SetChannelMap({{0, 1}, {1, 0}}, AudioFilter::kInput);
    stage.GetFilter().GetChannelMapChangedSignal().connect_extended(
        [&stage](const boost::signals2::connection& connection, AudioFilter::Direction, const ChannelMap&,
                 const ChannelMap&) {
            connection.disconnect();
            stage.SetTrack("mono");
        });
    stage.PressReset();
    EXPECT_EQ(stage.GetInputs(), (ChannelMap{{0, 0}, {1, 0}}));
    EXPECT_EQ(stage.GetOutputs(), (ChannelMap{{0, 0}, {1, 0}}));
}

TEST(AudioFilterChannelMapEditorViewTest, TheButtonKeepsTheFocusOverAnotherFormat) {
    ChannelMapEditorStage stage("stereo");
    stage.Show();
    ASSERT_TRUE(stage.GetButton().UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
    stage.SetTrack("5.1");
    EXPECT_TRUE(stage.GetButton().UI_HasKeyboardFocus(false));
}

TEST(AudioFilterChannelMapEditorViewTest, ChannelsThatTheFilterGotSinceAreShownAsNone) {
    ChannelMapEditorStage stage("4");
    stage.GetFilter().SetBuses({Bus("", "8")}, {Bus("", "8")});
    stage.Assign(AudioFilter::kInput, 6, 1);
    EXPECT_EQ(stage.GetRows()[1].input->GetValue(), 0);
}

// Odd filters

TEST(AudioFilterChannelMapEditorViewTest, AFilterWithoutBusesLetsEveryChannelPass) {
    ChannelMapEditorStage stage(MakeFilter({}, {}), "stereo", "mono");
    stage.Show();
    EXPECT_EQ(stage.Read(0), "Left | Bypass | Bypass | Left");
    EXPECT_THAT(ChannelMapEditorStage::GetItems(*stage.GetRows()[0].input), ElementsAre("(None)", ""));
    ChannelMapEditorStage::Choose(*stage.GetRows()[0].input, kBlank);
    stage.PressReset();
    EXPECT_THAT(stage.GetTold(), IsEmpty());
}

TEST(AudioFilterChannelMapEditorViewTest, SixtyFourChannelsCanBeRouted) {
    ChannelMapEditorStage stage(MakeFilter({Bus("", "64")}, {Bus("", "64")}), "64");
    stage.Show();
    ASSERT_THAT(stage.GetRows(), SizeIs(64));
    EXPECT_EQ(stage.Read(63), "64 | 64 | 64 | 64");
    ChannelMapEditorStage::Choose(*stage.GetRows()[0].input, 65);
    EXPECT_EQ(stage.GetInputs().at(63), 0);
    EXPECT_EQ(stage.Read(63), "64 | (None) | 64 | 64");
}

// Lifetime and keyboard

TEST(AudioFilterChannelMapEditorViewTest, TheViewMayBeLetGoOfInAnswerToAChoice) {
    ChannelMapEditorStage stage("stereo");
    stage.Show();
    bool told = false;
    stage.GetView().GetChannelMapChangedInteractivelySignal().connect(
        [&](const ChannelMap&, const ChannelMap&, const ChannelMap&, const ChannelMap&) {
            told = true;
            stage.GetArea().takeWidget()->deleteLater();
            stage.GetViewPtr().reset();
        });
    ChannelMapEditorStage::Choose(*stage.GetRows()[0].input, kRight);
    EXPECT_TRUE(told);
    EXPECT_TRUE(ProcessEventsUntil([&] { return stage.GetFilter().GetChannelMapChangedSignal().num_slots() == 0; }));
}

TEST(AudioFilterChannelMapEditorViewTest, ControlsThatOutliveTheViewCallNobody) {
    const int filters = AudioFilterDouble::GetLiveCount();
    boost::intrusive_ptr<UI_Popup> popup;
    {
        ChannelMapEditorStage stage("stereo");
        popup = stage.GetRows()[0].input;
    }
    EXPECT_EQ(AudioFilterDouble::GetLiveCount(), filters);
    popup->SetValueString(U("still here"), true);
    EXPECT_EQ(Utf8(popup->GetValueString()), "still here");
}

TEST(AudioFilterChannelMapEditorViewTest, TheViewIsGoneFromTheFiltersSignalsWithItsLastReference) {
    const FilterPtr filter(new AudioFilterDouble);
    { ChannelMapEditorStage stage(filter, "stereo"); }
    EXPECT_EQ(filter->GetChannelMapChangedSignal().num_slots(), 0u);
    EXPECT_EQ(filter->GetTargetFormatChangedSignal().num_slots(), 0u);
    filter->AssignChannelMapping(AudioFilter::kInput, 0, 1);
}

TEST(AudioFilterChannelMapEditorViewTest, ItScrollsAndIsNotResized) {
    ChannelMapEditorStage stage("stereo");
    EXPECT_TRUE(stage.GetView().CanScrollContent());
    EXPECT_FALSE(stage.GetView().CanResizeContent());
}

TEST(AudioFilterChannelMapEditorViewTest, TheTabKeyGoesThroughTheRowsToTheButtonAlsoAfterAnotherFormat) {
    ChannelMapEditorStage stage("5.1");
    stage.SetTrack("stereo", "mono");
    stage.Show();
    const auto rows = stage.GetRows();
    ASSERT_TRUE(rows[0].input->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
    const std::vector<zelui::ui::UI_Node*> order = {rows[0].output, rows[1].input, rows[1].output, rows[2].input,
                                                    &stage.GetButton()};
    for (zelui::ui::UI_Node* node : order) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(node->UI_HasKeyboardFocus(false));
    }
}

TEST(AudioFilterChannelMapEditorViewTest, ScreenReadersAreToldWhatEachPopupRoutes) {
    ChannelMapEditorStage stage("stereo", "mono", "Key");
    EXPECT_EQ(Utf8(stage.GetRows()[0].input->UI_GetAccessibleName()), "Effect Input: Left");
    EXPECT_EQ(Utf8(stage.GetRows()[1].output->UI_GetAccessibleName()), "Effect Output: Right");
    EXPECT_EQ(Utf8(stage.GetRows()[2].input->UI_GetAccessibleName()), "Effect Input: Mono (Key)");
}

}  // namespace zeltests
