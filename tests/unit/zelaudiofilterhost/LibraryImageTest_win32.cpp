// The reasons why a file is not even given to the loader, seen where users see them.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include <gtest/gtest.h>

#include "DescribeForTest.h"
#include "support/ThrowAwayFolder.h"

using namespace zeltests;

namespace {

/// Where a module's headers are in its bytes.
class Headers {
public:
    explicit Headers(const std::string& bytes) : mBytes(bytes) {
        IMAGE_DOS_HEADER start;
        std::memcpy(&start, bytes.data(), sizeof(start));
        mBegin = static_cast<std::size_t>(start.e_lfanew);
        std::memcpy(&headers, bytes.data() + mBegin, sizeof(headers));
    }

    /// The bytes with the headers as they are now.
    std::string Written() const {
        std::string bytes = mBytes;
        std::memcpy(bytes.data() + mBegin, &headers, sizeof(headers));
        return bytes;
    }
    std::size_t GetSections() const {
        return mBegin + offsetof(IMAGE_NT_HEADERS64, OptionalHeader) + headers.FileHeader.SizeOfOptionalHeader;
    }

    IMAGE_NT_HEADERS64 headers;

private:
    std::string mBytes;
    std::size_t mBegin;
};

/// Where the part of a library that is needed to run it ends.
std::size_t EndOfSections(const std::string& bytes) {
    const Headers at(bytes);
    std::size_t end = 0;
    for (std::size_t i = 0; i < at.headers.FileHeader.NumberOfSections; ++i) {
        IMAGE_SECTION_HEADER section;
        std::memcpy(&section, bytes.data() + at.GetSections() + i * sizeof(section), sizeof(section));
        end = std::max<std::size_t>(end, section.PointerToRawData + section.SizeOfRawData);
    }
    return end;
}

class LibraryImageTest : public testing::Test {
protected:
    /// The reason given for a file of these bytes.
    std::string ReasonOfBytes(const std::string& bytes) {
        const std::string path = mFolder.Path("probe.dll");
        WriteFile(path, bytes);
        return ReasonOfVst(path);
    }
    std::string Good() const { return ReadFile(TestPlugin("vst/good/zel_gain.dll")); }

    ThrowAwayFolder mFolder;
};

}  // namespace

TEST_F(LibraryImageTest, FilesThatAreNoLibrariesSayWhatTheyAre) {
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/text.dll")), "not a shared library");
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/empty.dll")), "empty file");
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/foreign.dll")), "a Linux library");
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/folder.dll")), "is a folder, not a file");
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/not_there.dll")), "there is no such file");
    EXPECT_EQ(ReasonOfBytes("!<arch>\nzel.o/"), "a static library");
    EXPECT_EQ(ReasonOfBytes("\xCF\xFA\xED\xFE and so on"), "a macOS library");
    EXPECT_EQ(ReasonOfBytes("M"), "not a shared library");
    EXPECT_EQ(ReasonOfBytes("MZ"), "cut off");
}

TEST_F(LibraryImageTest, LibrariesOfOtherMachinesSayWhichOnes) {
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/other_processor.dll")), "built for another processor (AArch64)");
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/word_size.dll")), "a 32-bit library");
    Headers changed(Good());
    changed.headers.FileHeader.Machine = 0x1234;
    EXPECT_EQ(ReasonOfBytes(changed.Written()), "built for another processor (machine number 4660)");
}

TEST_F(LibraryImageTest, CutOffLibrariesNeverReachTheLoaderWhereverTheCutIs) {
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/cut_off.dll")), "cut off");
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/cut_in_the_middle.dll")), "cut off");
    const std::string good = Good();
    const std::size_t needed = EndOfSections(good);
    ASSERT_GT(needed, 4096u);
    EXPECT_EQ(ReasonOfBytes(good.substr(0, needed)), "described");
    EXPECT_EQ(ReasonOfBytes(good.substr(0, needed - 1)), "cut off");
    for (std::size_t length = 16; length < 4096; length += 37) {
        EXPECT_EQ(ReasonOfBytes(good.substr(0, length)), "cut off") << length;
    }
    for (std::size_t length = 4096; length < needed; length += needed / 50) {
        EXPECT_EQ(ReasonOfBytes(good.substr(0, length)), "cut off") << length;
    }
}

TEST_F(LibraryImageTest, HeadersWithImpossibleNumbersAreDamagedOrCutOff) {
    const std::string good = Good();
    Headers changed(good);
    changed.headers.FileHeader.NumberOfSections = 0xFFFF;
    EXPECT_EQ(ReasonOfBytes(changed.Written()), "damaged: its header makes no sense");
    changed = Headers(good);
    changed.headers.FileHeader.SizeOfOptionalHeader = 3;
    EXPECT_EQ(ReasonOfBytes(changed.Written()), "damaged: its header makes no sense");
    changed = Headers(good);
    changed.headers.OptionalHeader.SizeOfHeaders = 0xFFFFFFFF;
    EXPECT_EQ(ReasonOfBytes(changed.Written()), "cut off");
    changed = Headers(good);
    changed.headers.Signature = 0x12345678;
    EXPECT_EQ(ReasonOfBytes(changed.Written()), "not a shared library");
    std::string bytes = good;
    for (const LONG place : {LONG(-1), LONG(0), LONG(1), LONG(0x7FFFFFFF)}) {
        std::memcpy(bytes.data() + offsetof(IMAGE_DOS_HEADER, e_lfanew), &place, sizeof(place));
        EXPECT_TRUE(ReasonOfBytes(bytes) == "cut off" || ReasonOfBytes(bytes) == "damaged: its header makes no sense")
            << place;
    }
}

TEST_F(LibraryImageTest, ASectionThatWrapsAroundIsCutOff) {
    std::string bytes = Good();
    const std::size_t place = Headers(bytes).GetSections();
    IMAGE_SECTION_HEADER section;
    std::memcpy(&section, bytes.data() + place, sizeof(section));
    section.PointerToRawData = 4096;
    section.SizeOfRawData = 0xFFFFFF00;
    std::memcpy(bytes.data() + place, &section, sizeof(section));
    EXPECT_EQ(ReasonOfBytes(bytes), "cut off");
}

TEST_F(LibraryImageTest, DevicesAreNotWaitedFor) {
    EXPECT_EQ(ReasonOfVst("\\\\.\\NUL"), "is no regular file");
    EXPECT_NE(ReasonOfVst("\\\\.\\pipe\\zel-nowhere"), "described");
}

TEST_F(LibraryImageTest, PathsThatWouldLoadSomethingElseAreRefused) {
    EXPECT_EQ(ReasonOfVst("kernel32.dll"), "there is no such file");
    EXPECT_EQ(ReasonOfVst(""), "there is no such file");
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/good/zel_gain.dll") + std::string(1, '\0') + ".dll"),
              "there is no such file");
}

TEST_F(LibraryImageTest, AProgramIsNoPlugin) {
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const zelcore::ustring path(program, program + std::wcslen(program));
    EXPECT_EQ(ReasonOfVst(Text(path)), "is a program, not a plug-in");
}
