// The reasons why a file is not even given to the loader, seen where users see them.
#include <algorithm>
#include <cstring>

#include <elf.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "DescribeForTest.h"
#include "support/ThrowAwayFolder.h"

using namespace zeltests;

namespace {

/// Where the part of a library that is needed to run it ends.
std::size_t EndOfSegments(const std::string& bytes) {
    Elf64_Ehdr header;
    std::memcpy(&header, bytes.data(), sizeof(header));
    std::size_t end = 0;
    for (std::size_t i = 0; i < header.e_phnum; ++i) {
        Elf64_Phdr segment;
        std::memcpy(&segment, bytes.data() + header.e_phoff + i * sizeof(segment), sizeof(segment));
        if (segment.p_type == PT_LOAD) end = std::max(end, segment.p_offset + segment.p_filesz);
    }
    return end;
}

class LibraryImageTest : public testing::Test {
protected:
    /// The reason given for a file of these bytes.
    std::string ReasonOfBytes(const std::string& bytes) {
        const std::string path = mFolder.Path("probe" ZEL_MODULE);
        WriteFile(path, bytes);
        return ReasonOfVst(path);
    }
    std::string Good() const { return ReadFile(TestPlugin("vst/good/zel_gain" ZEL_MODULE)); }

    ThrowAwayFolder mFolder;
};

}  // namespace

TEST_F(LibraryImageTest, FilesThatAreNoLibrariesSayWhatTheyAre) {
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/text" ZEL_MODULE)), "not a shared library");
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/empty" ZEL_MODULE)), "empty file");
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/foreign" ZEL_MODULE)), "a Windows library");
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/folder" ZEL_MODULE)), "is a folder, not a file");
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/not_there" ZEL_MODULE)), "there is no such file");
    EXPECT_EQ(ReasonOfBytes("!<arch>\nzel.o/"), "a static library");
    EXPECT_EQ(ReasonOfBytes("\xCF\xFA\xED\xFE and so on"), "a macOS library");
    EXPECT_EQ(ReasonOfBytes("\x7F"), "not a shared library");
}

TEST_F(LibraryImageTest, LibrariesOfOtherMachinesSayWhichOnes) {
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/other_processor" ZEL_MODULE)),
              "built for another processor (AArch64)");
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/word_size" ZEL_MODULE)), "a 32-bit library");
    std::string bytes = Good();
    bytes[EI_DATA] = ELFDATA2MSB;
    bytes[18] = 0;
    bytes[19] = 21;
    EXPECT_EQ(ReasonOfBytes(bytes), "built for another processor (POWER)");
    bytes[18] = '\x12';
    bytes[19] = '\x34';
    EXPECT_EQ(ReasonOfBytes(bytes), "built for another processor (machine number 4660)");
}

TEST_F(LibraryImageTest, CutOffLibrariesNeverReachTheLoaderWhereverTheCutIs) {
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/cut_off" ZEL_MODULE)), "cut off");
    EXPECT_EQ(ReasonOfVst(TestPlugin("notplugins/cut_in_the_middle" ZEL_MODULE)), "cut off");
    const std::string good = Good();
    // What lies behind the last segment is for debuggers; a library without it works.
    const std::size_t needed = EndOfSegments(good);
    ASSERT_GT(needed, 4096u);
    EXPECT_EQ(ReasonOfBytes(good.substr(0, needed)), "described");
    EXPECT_EQ(ReasonOfBytes(good.substr(0, needed - 1)), "cut off");
    for (std::size_t length = 16; length < needed; length += 97) {
        EXPECT_EQ(ReasonOfBytes(good.substr(0, length)), "cut off") << length;
    }
}

TEST_F(LibraryImageTest, HeadersWithImpossibleNumbersAreDamagedOrCutOff) {
    Elf64_Ehdr header;
    const std::string good = Good();
    std::memcpy(&header, good.data(), sizeof(header));
    const auto reasonOfHeader = [&](const Elf64_Ehdr& changed) {
        std::string bytes = good;
        std::memcpy(bytes.data(), &changed, sizeof(changed));
        return ReasonOfBytes(bytes);
    };
    Elf64_Ehdr changed = header;
    changed.e_phoff = ~std::uint64_t(0) - 10;
    EXPECT_EQ(reasonOfHeader(changed), "cut off");
    changed = header;
    changed.e_phnum = 0xFFFF;
    EXPECT_EQ(reasonOfHeader(changed), "damaged: its header makes no sense");
    changed = header;
    changed.e_phentsize = 3;
    EXPECT_EQ(reasonOfHeader(changed), "damaged: its header makes no sense");
    changed = header;
    changed.e_type = ET_REL;
    EXPECT_EQ(reasonOfHeader(changed), "not a shared library");
}

TEST_F(LibraryImageTest, ASegmentThatWrapsAroundTheAddressSpaceIsCutOff) {
    std::string bytes = Good();
    Elf64_Ehdr header;
    std::memcpy(&header, bytes.data(), sizeof(header));
    Elf64_Phdr segment;
    std::memcpy(&segment, bytes.data() + header.e_phoff, sizeof(segment));
    segment.p_type = PT_LOAD;
    segment.p_offset = 4096;
    segment.p_filesz = ~std::uint64_t(0) - 100;
    std::memcpy(bytes.data() + header.e_phoff, &segment, sizeof(segment));
    EXPECT_EQ(ReasonOfBytes(bytes), "cut off");
}

TEST_F(LibraryImageTest, PipesAndDevicesAreNotWaitedFor) {
    const std::string pipe = mFolder.Path("pipe" ZEL_MODULE);
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(ReasonOfVst(pipe), "is no regular file");
    EXPECT_EQ(ReasonOfVst3(pipe), "is no regular file");
    EXPECT_EQ(ReasonOfVst("/dev/zero"), "is no regular file");
}

TEST_F(LibraryImageTest, PathsThatWouldLoadSomethingElseAreRefused) {
    EXPECT_EQ(ReasonOfVst("libc.so.6"), "there is no such file");
    EXPECT_EQ(ReasonOfVst(""), "there is no such file");
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/good/zel_gain" ZEL_MODULE) + std::string(1, '\0') + ZEL_MODULE),
              "there is no such file");
}

TEST_F(LibraryImageTest, AProgramIsNoPlugin) { EXPECT_EQ(ReasonOfVst("/bin/sh"), "is a program, not a plug-in"); }
