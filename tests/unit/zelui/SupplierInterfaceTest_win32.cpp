#include <gtest/gtest.h>
#include <windows.h>
#include <zelui/SupplierInterface.h>

TEST(SupplierInterfaceWin32Test, HighContrastIsWhatTheSystemSays) {
    // Setting it would turn the desktop of whoever runs this.
    HIGHCONTRASTW setting = {};
    setting.cbSize = sizeof setting;
    ASSERT_TRUE(SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0));
    EXPECT_EQ(zelui::drawbot::SupplierInterface::GetDefault()->WantsHighContrast(),
              (setting.dwFlags & HCF_HIGHCONTRASTON) != 0);
}
