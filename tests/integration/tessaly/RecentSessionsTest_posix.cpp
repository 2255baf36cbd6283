#include <gtest/gtest.h>
#include <QAction>
#include <QMenu>

#include "WindowStage.h"

namespace zeltests {

/// Names that other systems do not allow.
typedef WindowStage RecentSessionsTest;

TEST_F(RecentSessionsTest, WhatLooksLikeMarkupInANameIsNone) {
    ASSERT_TRUE(mWindow->GetFiles().SaveAs(mFolder.Path("rock & <b>roll.tessaly")));
    QMenu* const recent = mWindow->findChild<QMenu*>(QStringLiteral("RecentMenu"));
    Q_EMIT recent->aboutToShow();
    ASSERT_EQ(recent->actions().size(), 1);
    const QAction& action = *recent->actions()[0];
    EXPECT_EQ(action.text(), "rock && <b>roll.tessaly");
    EXPECT_EQ(action.toolTip().toStdString(), "<span>" + mFolder.Path("rock &amp; &lt;b&gt;roll.tessaly") + "</span>");
}

}  // namespace zeltests
