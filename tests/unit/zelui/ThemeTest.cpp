#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <QApplication>
#include <QCommonStyle>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QStyleFactory>
#include <QToolTip>
#include <stdexcept>
#include <vector>

#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>
#include <zelcore/Threads.h>
#include <zelui/QtBridge.h>
#include <zelui/Theme.h>

#include "support/WaitFor.h"

namespace {

using zelui::ui::GetColor;
using zelui::ui::InstallThemeChangedFunction;
using zelui::ui::Theme;
using zelui::ui::ThemeChangedFunction;

void ProcessEvents() { QCoreApplication::processEvents(); }

// Runs all that is posted by now: a call posted after it has arrived.
void ProcessPosted() {
    bool arrived = false;
    zelcore::threads::AsyncCallFromMainThread([&arrived] { arrived = true; });
    ASSERT_TRUE(zeltests::WaitFor([&arrived] { return arrived; }, std::chrono::seconds(20), &ProcessEvents));
}

// Whatever a test changes of the application's look.
class ThemeTest : public ::testing::Test {
protected:
    ~ThemeTest() override {
        Theme::Get().Choose(Theme::kSystem);
        QApplication::setPalette(QPalette());
        ProcessPosted();
    }

    boost::shared_ptr<ThemeChangedFunction> Install(const ThemeChangedFunction& function) {
        const boost::shared_ptr<ThemeChangedFunction> installed = boost::make_shared<ThemeChangedFunction>(function);
        InstallThemeChangedFunction(installed);
        mInstalled.push_back(installed);
        return installed;
    }

    void TearDown() override {
        for (const boost::shared_ptr<ThemeChangedFunction>& function : mInstalled) function->clear();
    }

    std::vector<boost::shared_ptr<ThemeChangedFunction>> mInstalled;
};

double ToLinear(double part) { return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); }

double GetLuminance(const QColor& color) {
    return 0.2126 * ToLinear(color.redF()) + 0.7152 * ToLinear(color.greenF()) + 0.0722 * ToLinear(color.blueF());
}

double GetContrast(const QColor& one, const QColor& other) {
    const double first = GetLuminance(one) + 0.05;
    const double second = GetLuminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

QColor ToQColor(const zelui::drawbot::ColorRGBA& color) {
    return QColor::fromRgbF(color.red, color.green, color.blue, color.alpha);
}

struct TextOnGround {
    QPalette::ColorRole text;
    QPalette::ColorRole ground;
};

const TextOnGround kTexts[] = {{QPalette::WindowText, QPalette::Window},
                               {QPalette::Text, QPalette::Base},
                               {QPalette::Text, QPalette::AlternateBase},
                               {QPalette::ButtonText, QPalette::Button},
                               {QPalette::PlaceholderText, QPalette::Base},
                               {QPalette::HighlightedText, QPalette::Highlight},
                               {QPalette::Link, QPalette::Window},
                               {QPalette::Link, QPalette::Base},
                               {QPalette::LinkVisited, QPalette::Window},
                               {QPalette::LinkVisited, QPalette::Base},
                               {QPalette::ToolTipText, QPalette::ToolTipBase}};

void ExpectReadable(const QPalette& palette, QPalette::ColorGroup group, double least) {
    for (const TextOnGround& pair : kTexts) {
        EXPECT_GE(GetContrast(palette.color(group, pair.text), palette.color(group, pair.ground)), least)
            << "group " << group << " text " << pair.text << " on " << pair.ground;
    }
}

// A style that paints with what it likes.
class OwnStyle final : public QCommonStyle {};

QPalette MakeHostPalette(const QColor& window) {
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, window);
    return palette;
}

}  // namespace

TEST_F(ThemeTest, TheColorNumbersAreTheToolkitsOwn) {
    EXPECT_EQ(zelui::ui::kColorListText, 282);
    EXPECT_EQ(zelui::ui::kColorListTextHighlighted, 283);
    EXPECT_EQ(zelui::ui::kColorFrame, 324);
}

TEST_F(ThemeTest, FollowsTheSystemUntilTheHostChooses) { EXPECT_EQ(Theme::Get().GetChoice(), Theme::kSystem); }

TEST_F(ThemeTest, DarkIsDarkAndLightIsLight) {
    Theme::Get().Choose(Theme::kDark);
    EXPECT_EQ(Theme::Get().GetChoice(), Theme::kDark);
    EXPECT_LT(Theme::Get().GetBrightness(), 0.5f);
    EXPECT_TRUE(Theme::Get().IsDark());
    Theme::Get().Choose(Theme::kLight);
    EXPECT_EQ(Theme::Get().GetChoice(), Theme::kLight);
    EXPECT_GT(Theme::Get().GetBrightness(), 0.5f);
    EXPECT_FALSE(Theme::Get().IsDark());
}

TEST_F(ThemeTest, TheBrightnessIsThatOfTheWindowsBackground) {
    QApplication::setPalette(MakeHostPalette(Qt::white));
    EXPECT_FLOAT_EQ(Theme::Get().GetBrightness(), 1);
    QApplication::setPalette(MakeHostPalette(Qt::black));
    EXPECT_FLOAT_EQ(Theme::Get().GetBrightness(), 0);
    QApplication::setPalette(MakeHostPalette(QColor(128, 128, 128)));
    EXPECT_NEAR(Theme::Get().GetBrightness(), 0.5, 0.01);
}

TEST_F(ThemeTest, WindowsAndControlsGetTheColors) {
    QWidget window;
    QPushButton button(&window);
    window.show();
    QWidget neverShown;
    bool wereThere = false;
    Install([&] { wereThere = button.palette() == QApplication::palette(); });
    Theme::Get().Choose(Theme::kDark);
    EXPECT_TRUE(wereThere) << "before anybody is told";
    EXPECT_LT(window.palette().color(QPalette::Window).lightnessF(), 0.5);
    EXPECT_LT(neverShown.palette().color(QPalette::Window).lightnessF(), 0.5);
    EXPECT_GT(button.palette().color(QPalette::ButtonText).lightnessF(), 0.5);
    EXPECT_LT(QColor(window.grab().toImage().pixel(1, 1)).lightnessF(), 0.5);
    Theme::Get().Choose(Theme::kLight);
    EXPECT_GT(QColor(window.grab().toImage().pixel(1, 1)).lightnessF(), 0.5);
}

TEST_F(ThemeTest, TheSystemsPaletteAndToolTipsComeBack) {
    const QPalette system = QApplication::palette();
    const QPalette toolTips = QToolTip::palette();
    Theme::Get().Choose(Theme::kDark);
    Theme::Get().Choose(Theme::kLight);
    EXPECT_NE(QApplication::palette(), system);
    Theme::Get().Choose(Theme::kSystem);
    EXPECT_EQ(QApplication::palette(), system);
    EXPECT_EQ(QApplication::palette().resolveMask(), 0u) << "otherwise it would not follow the desktop";
    EXPECT_EQ(QToolTip::palette(), toolTips);
    EXPECT_EQ(QToolTip::palette().resolveMask(), toolTips.resolveMask());
}

TEST_F(ThemeTest, APaletteOfTheHostComesBack) {
    QApplication::setPalette(MakeHostPalette(Qt::yellow));
    Theme::Get().Choose(Theme::kDark);
    EXPECT_TRUE(Theme::Get().IsDark());
    Theme::Get().Choose(Theme::kSystem);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(Qt::yellow));
}

TEST_F(ThemeTest, NoRoleIsLeftToTheSystem) {
    for (const Theme::Choice choice : {Theme::kLight, Theme::kDark}) {
        Theme::Get().Choose(choice);
        const QPalette palette = QApplication::palette();
        for (int group = 0; group < QPalette::NColorGroups; ++group) {
            for (int role = 0; role < QPalette::NColorRoles; ++role) {
                if (role == QPalette::NoRole) continue;
                EXPECT_TRUE(palette.isBrushSet(static_cast<QPalette::ColorGroup>(group),
                                               static_cast<QPalette::ColorRole>(role)))
                    << group << " " << role;
            }
        }
    }
}

TEST_F(ThemeTest, TextsAreReadableOnBothThemes) {
    for (const Theme::Choice choice : {Theme::kLight, Theme::kDark}) {
        Theme::Get().Choose(choice);
        ExpectReadable(QApplication::palette(), QPalette::Active, 4.5);
        ExpectReadable(QApplication::palette(), QPalette::Inactive, 4.5);
        ExpectReadable(QApplication::palette(), QPalette::Disabled, 3.0);
        const QPalette toolTips = QToolTip::palette();
        EXPECT_GE(GetContrast(toolTips.color(QPalette::ToolTipText), toolTips.color(QPalette::ToolTipBase)), 4.5);
    }
}

TEST_F(ThemeTest, ListColorsAreThoseOfThePaletteOfNow) {
    for (const Theme::Choice choice : {Theme::kLight, Theme::kDark, Theme::kSystem}) {
        Theme::Get().Choose(choice);
        const QPalette palette = QApplication::palette();
        EXPECT_EQ(ToQColor(GetColor(282)).rgba(), palette.color(QPalette::Text).rgba());
        EXPECT_EQ(ToQColor(GetColor(283)).rgba(), palette.color(QPalette::HighlightedText).rgba());
        EXPECT_EQ(GetColor(-1), GetColor(282));
        EXPECT_EQ(GetColor(9999), GetColor(282));
    }
}

TEST_F(ThemeTest, FramesCanBeSeenOnEveryBackground) {
    for (const Theme::Choice choice : {Theme::kLight, Theme::kDark, Theme::kSystem}) {
        Theme::Get().Choose(choice);
        EXPECT_GE(GetContrast(ToQColor(GetColor(324)), QApplication::palette().color(QPalette::Window)), 1.5);
    }
    QPalette flat = MakeHostPalette(QColor(40, 40, 40));
    for (const QPalette::ColorRole role : {QPalette::Mid, QPalette::Dark, QPalette::Light})
        flat.setColor(role, QColor(40, 40, 40));
    flat.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(flat);
    EXPECT_GE(GetContrast(ToQColor(GetColor(324)), QColor(40, 40, 40)), 1.5) << "a system without colours for edges";
}

TEST_F(ThemeTest, TheFontIsThatOfControls) {
    EXPECT_EQ(zelui::qt::ToQString(zelui::ui::GetFontName(0)), QApplication::font().family());
    EXPECT_EQ(zelui::ui::GetFontName(-3), zelui::ui::GetFontName(0));
    EXPECT_EQ(zelui::ui::GetFontName(12), zelui::ui::GetFontName(0));
}

TEST_F(ThemeTest, FunctionsAreCalledOncePerChangeBeforeChooseReturns) {
    int calls = 0;
    bool wasDark = false;
    Install([&] {
        ++calls;
        wasDark = Theme::Get().IsDark();
    });
    Theme::Get().Choose(Theme::kDark);
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(wasDark) << "the colours are there already";
    ProcessPosted();
    EXPECT_EQ(calls, 1) << "nor again by the event loop";
    Theme::Get().Choose(Theme::kDark);
    EXPECT_EQ(calls, 1) << "no change";
    Theme::Get().Choose(Theme::kSystem);
    ProcessPosted();
    EXPECT_EQ(calls, 2);
}

TEST_F(ThemeTest, ChangesOfTheHostOrTheDesktopAreNoticedAsOne) {
    int calls = 0;
    Install([&calls] { ++calls; });
    QApplication::setPalette(MakeHostPalette(Qt::green));
    QApplication::setPalette(MakeHostPalette(Qt::red));
    EXPECT_TRUE(zeltests::WaitFor([&calls] { return calls > 0; }, std::chrono::seconds(20), &ProcessEvents));
    ProcessPosted();
    EXPECT_EQ(calls, 1);
}

TEST_F(ThemeTest, AChangeThatIsTakenBackIsNone) {
    int calls = 0;
    Install([&calls] { ++calls; });
    const QPalette before = QApplication::palette();
    QApplication::setPalette(MakeHostPalette(Qt::green));
    QApplication::setPalette(before);
    ProcessPosted();
    EXPECT_EQ(calls, 0);
}

TEST_F(ThemeTest, ToolTipsKeepTheChosenColorsWhenTheDesktopChanges) {
    Theme::Get().Choose(Theme::kDark);
    const QPalette dark = QToolTip::palette();
    const QPalette fromDesktop(Qt::cyan);
    QToolTip::setPalette(fromDesktop);
    QApplication::setPalette(MakeHostPalette(QColor(1, 2, 3)));
    EXPECT_TRUE(
        zeltests::WaitFor([&dark] { return QToolTip::palette() == dark; }, std::chrono::seconds(20), &ProcessEvents));
    Theme::Get().Choose(Theme::kSystem);
    EXPECT_EQ(QToolTip::palette(), fromDesktop);
    QToolTip::setPalette(QPalette());
}

TEST_F(ThemeTest, AnEmptiedFunctionIsNotCalledAndLetGoOfAtTheNextChange) {
    int calls = 0;
    boost::shared_ptr<ThemeChangedFunction> function = boost::make_shared<ThemeChangedFunction>([&calls] { ++calls; });
    const boost::weak_ptr<ThemeChangedFunction> watched = function;
    InstallThemeChangedFunction(function);
    function->clear();
    function.reset();
    EXPECT_FALSE(watched.expired());
    Theme::Get().Choose(Theme::kDark);
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(calls, 0);
}

TEST_F(ThemeTest, AnEmptiedFunctionIsLetGoOfAtTheNextInstallation) {
    boost::shared_ptr<ThemeChangedFunction> function = boost::make_shared<ThemeChangedFunction>([] {});
    const boost::weak_ptr<ThemeChangedFunction> watched = function;
    InstallThemeChangedFunction(function);
    function->clear();
    function.reset();
    Install([] {});
    EXPECT_TRUE(watched.expired());
}

TEST_F(ThemeTest, TheToolkitKeepsItsCopyOfAFunction) {
    int calls = 0;
    boost::weak_ptr<ThemeChangedFunction> watched;
    {
        const boost::shared_ptr<ThemeChangedFunction> function =
            boost::make_shared<ThemeChangedFunction>([&calls] { ++calls; });
        InstallThemeChangedFunction(function);
        watched = function;
    }
    Theme::Get().Choose(Theme::kDark);
    EXPECT_EQ(calls, 1);
    watched.lock()->clear();
}

TEST_F(ThemeTest, AFunctionThatIsInstalledTwiceIsCalledOnceAndNoFunctionIsIgnored) {
    int calls = 0;
    InstallThemeChangedFunction(Install([&calls] { ++calls; }));
    InstallThemeChangedFunction(boost::shared_ptr<ThemeChangedFunction>());
    Theme::Get().Choose(Theme::kDark);
    EXPECT_EQ(calls, 1);
}

TEST_F(ThemeTest, AFunctionMayEmptyItselfAndOthers) {
    int itself = 0;
    int other = 0;
    const boost::shared_ptr<int> bound = boost::make_shared<int>(7);
    boost::shared_ptr<ThemeChangedFunction> first;
    boost::shared_ptr<ThemeChangedFunction> second;
    first = Install([&, bound] {
        first->clear();
        second->clear();
        itself += *bound;
    });
    second = Install([&other] { ++other; });
    Theme::Get().Choose(Theme::kDark);
    Theme::Get().Choose(Theme::kLight);
    EXPECT_EQ(itself, 7);
    EXPECT_EQ(other, 0);
    EXPECT_EQ(bound.use_count(), 1);
}

TEST_F(ThemeTest, AFunctionInstalledByAFunctionIsCalledFromTheNextChangeOn) {
    int late = 0;
    bool installed = false;
    Install([&] {
        for (int i = 0; !installed && i < 100; ++i) Install([&late] { ++late; });
        installed = true;
    });
    Theme::Get().Choose(Theme::kDark);
    EXPECT_EQ(late, 0);
    Theme::Get().Choose(Theme::kLight);
    EXPECT_EQ(late, 100);
}

TEST_F(ThemeTest, AFunctionMayChooseAgainAndOthersHearOfTheLastChangeOnly) {
    std::vector<bool> heard;
    Install([] { Theme::Get().Choose(Theme::kLight); });
    Install([&heard] { heard.push_back(Theme::Get().IsDark()); });
    Theme::Get().Choose(Theme::kDark);
    EXPECT_EQ(heard, std::vector<bool>{false});
    EXPECT_EQ(Theme::Get().GetChoice(), Theme::kLight);
}

TEST_F(ThemeTest, AnExceptionOfAFunctionReachesWhoChoseAfterAllWereCalled) {
    int calls = 0;
    Install([] { throw std::runtime_error("the first"); });
    Install([&calls] {
        ++calls;
        throw std::logic_error("the second");
    });
    Install([&calls] { ++calls; });
    try {
        Theme::Get().Choose(Theme::kDark);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::runtime_error& exception) {
        EXPECT_STREQ(exception.what(), "the first");
    }
    EXPECT_EQ(calls, 2);
    EXPECT_TRUE(Theme::Get().IsDark());
    TearDown();
}

TEST_F(ThemeTest, AnExceptionDoesNotPassThroughTheEventLoop) {
    static QString sWarned;
    sWarned.clear();
    const QtMessageHandler former = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& message) { sWarned += message; });
    int calls = 0;
    Install([] { throw std::runtime_error("in the loop"); });
    Install([&calls] { ++calls; });
    QApplication::setPalette(MakeHostPalette(Qt::green));
    EXPECT_NO_THROW(ProcessPosted());
    qInstallMessageHandler(former);
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(sWarned.contains("in the loop")) << sWarned.toStdString();
}

TEST_F(ThemeTest, AStyleThatShowsNoPalettesGivesWayAndComesBack) {
    const QPointer<QStyle> own = new OwnStyle;
    QApplication::setStyle(own);
    Theme::Get().Choose(Theme::kDark);
    EXPECT_EQ(QApplication::style()->name(), "fusion");
    Theme::Get().Choose(Theme::kLight);
    ASSERT_TRUE(own);
    Theme::Get().Choose(Theme::kSystem);
    EXPECT_EQ(QApplication::style(), own.data());
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    EXPECT_FALSE(own) << "Qt owns it again";
}

TEST_F(ThemeTest, AStyleThatTheHostSetsMeanwhileStays) {
    const QPointer<QStyle> own = new OwnStyle;
    QApplication::setStyle(own);
    Theme::Get().Choose(Theme::kDark);
    QApplication::setStyle(QStyleFactory::create("Windows"));
    Theme::Get().Choose(Theme::kSystem);
    EXPECT_EQ(QApplication::style()->name(), "windows");
    EXPECT_FALSE(own) << "nobody needs it any more";
    QApplication::setStyle(QStyleFactory::create("Fusion"));
}

TEST_F(ThemeTest, AStyleSheetOfTheHostIsLeftAlone) {
    const QPointer<QStyle> own = new OwnStyle;
    QApplication::setStyle(own);
    qApp->setStyleSheet("QPushButton { color: red }");
    Theme::Get().Choose(Theme::kDark);
    EXPECT_TRUE(Theme::Get().IsDark());
    EXPECT_TRUE(own);
    Theme::Get().Choose(Theme::kSystem);
    qApp->setStyleSheet(QString());
    EXPECT_TRUE(own);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
}

TEST_F(ThemeTest, EveryOwnerHasTheOneTheme) {
    class Owner final : public zelui::ui::ThemeOwner {};
    EXPECT_EQ(&Owner().UI_GetTheme(), &Theme::Get());
}
