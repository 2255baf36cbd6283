#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/FileError.h>
#include <zelcore/Localizer.h>
#include <zelcore/Utf.h>

#include "PlatformFiles.h"

using zelcore::config::Localizer;
using zelcore::filesupport::FileError;
using zelcore::utility::UTF8to16;

TEST(FileErrorTest, SaysOperationFileAndReasonInOneLine) {
    const FileError error("open", UTF8to16("/x/\xC3\xA4"), zeltests::kNoSuchFile);
    EXPECT_EQ(error.what(), "could not open '/x/\xC3\xA4': " + zeltests::GetSystemText(zeltests::kNoSuchFile));
    EXPECT_EQ(error.GetPath(), UTF8to16("/x/\xC3\xA4"));
    EXPECT_EQ(error.GetSystemError(), zeltests::kNoSuchFile);
}

TEST(FileErrorTest, ReasonThatIsNotTheSystemsIsLeftOut) {
    EXPECT_STREQ(FileError("open as a regular file", UTF8to16("/dev/null"), 0).what(),
                 "could not open as a regular file '/dev/null'");
}

TEST(FileErrorTest, LineBreaksInNamesDoNotBreakTheLine) {
    const FileError error("open", UTF8to16("/x\ny\x1B\x7F"), 0);
    EXPECT_STREQ(error.what(),
                 "could not open '/x?y?"
                 "?'");
    EXPECT_EQ(error.GetPath(), UTF8to16("/x\ny\x1B\x7F"));
}

TEST(FileErrorTest, PeopleReadWhatFailedWithWhichFileAndWhy) {
    EXPECT_EQ(FileError("write", UTF8to16("/x"), zeltests::kDiskFull).GetLocalizedText(),
              UTF8to16("'/x' could not be written: the disk is full"));
    EXPECT_EQ(FileError("open", UTF8to16("/x"), zeltests::kNoPermission).GetLocalizedText(),
              UTF8to16("'/x' could not be read: you do not have the permission"));
    EXPECT_EQ(FileError("write", UTF8to16("/x"), zeltests::kIsAFolder).GetLocalizedText(),
              UTF8to16("'/x' could not be written: it is a folder"));
    EXPECT_EQ(FileError("open as a regular file", UTF8to16("/x\n"), 0).GetLocalizedText(),
              UTF8to16("'/x?' is something else than a file"));
}

TEST(FileErrorTest, PeopleReadItInTheirLanguage) {
    const zeltests::ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("de.json"), R"({"/zelcore/FileError/Delete": "@0 bleibt",
                                                    "/zelcore/FileError/Permission": "verboten",
                                                    "/zelcore/FileError/Because": "@0, denn: @1"})");
    Localizer::GetInstance().LoadDictionary(zelcore::filesupport::File(folder.UPath("de.json")));
    const FileError error("delete", UTF8to16("/x"), zeltests::kNoPermission);
    EXPECT_EQ(error.GetLocalizedText(), UTF8to16("/x bleibt, denn: verboten"));
    EXPECT_EQ(error.what(), "could not delete '/x': " + zeltests::GetSystemText(zeltests::kNoPermission));
    Localizer::GetInstance().Clear();
}

TEST(FileErrorTest, WhatThereIsNoTextForIsAsItIs) {
    EXPECT_EQ(FileError("turn round", UTF8to16("/x"), 0).GetLocalizedText(), UTF8to16("could not turn round '/x'"));
    EXPECT_EQ(FileError("read", UTF8to16("/x"), zeltests::kDeviceBroken).GetLocalizedText(),
              UTF8to16("'/x' could not be read: " + zeltests::GetSystemText(zeltests::kDeviceBroken)));
}
