#include <gtest/gtest.h>
#include <QByteArray>
#include <QDir>

#include <zelui/SupplierInterface.h>

#include "support/ThrowAwayFolder.h"

namespace {

using zelui::drawbot::SupplierInterface;

// A variable of the environment for the time of a test.
class Variable {
public:
    Variable(const char* name, const QByteArray& value) : mName(name), mWasSet(qEnvironmentVariableIsSet(name)) {
        mFormer = qgetenv(name);
        value.isNull() ? qunsetenv(name) : qputenv(name, value);
    }
    ~Variable() { mWasSet ? qputenv(mName, mFormer) : qunsetenv(mName); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* mName;
    bool mWasSet;
    QByteArray mFormer;
};

bool WantsHighContrast() { return SupplierInterface::GetDefault()->WantsHighContrast(); }

}  // namespace

TEST(SupplierInterfaceLinuxTest, HighContrastIsWhatTheDesktopsThemeSays) {
    const zeltests::ThrowAwayFolder folder;
    const QByteArray path = QByteArray::fromStdString(folder.GetPath());
    const Variable config("XDG_CONFIG_HOME", path);
    const Variable system("XDG_CONFIG_DIRS", path);
    const Variable noTheme("GTK_THEME", QByteArray());
    EXPECT_FALSE(WantsHighContrast());
    zeltests::WriteFile(folder.Path("kdeglobals"), "[General]\nColorScheme=BreezeDark\n");
    EXPECT_FALSE(WantsHighContrast());
    zeltests::WriteFile(folder.Path("kdeglobals"), "[General]\nColorScheme=Breeze High Contrast\n");
    EXPECT_TRUE(WantsHighContrast());
    const Variable theme("GTK_THEME", "Adwaita:dark");
    EXPECT_FALSE(WantsHighContrast()) << "the environment wins";
    const Variable contrastTheme("GTK_THEME", "HighContrastInverse");
    EXPECT_TRUE(WantsHighContrast());
}

TEST(SupplierInterfaceLinuxTest, HighContrastIsFoundInTheToolkitSettingsFile) {
    const zeltests::ThrowAwayFolder folder;
    const Variable config("XDG_CONFIG_HOME", QByteArray::fromStdString(folder.GetPath()));
    const Variable noTheme("GTK_THEME", QByteArray());
    QDir(QString::fromStdString(folder.GetPath())).mkdir("gtk-3.0");
    zeltests::WriteFile(folder.Path("gtk-3.0/settings.ini"), "[Settings]\ngtk-theme-name=HighContrast\n");
    EXPECT_TRUE(WantsHighContrast());
}
