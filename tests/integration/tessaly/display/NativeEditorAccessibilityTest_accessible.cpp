#include <gmock/gmock.h>

#include "../ScreenReader.h"
#include "NativeEditorStage.h"

namespace zeltests {

using testing::IsEmpty;

typedef NativeEditorStage NativeEditorAccessibilityTest;

TEST_F(NativeEditorAccessibilityTest, CanBeHeardAndReachedWithoutAMouse) {
    AddToCatalogue(zelaudiofilterhost::kTechnologyVST, "vst/good/zel_editor" ZEL_MODULE);
    AddEffect("Zel Editor");
    tessaly::EditorWindow* const window = Open();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->IsOwnEditorOpen());
    Activate(*window);
    EXPECT_THAT(ScreenReader::FindFaults(*window), IsEmpty());
    EXPECT_THAT(ScreenReader::FindUnreachable(*window), IsEmpty());
}

}  // namespace zeltests
