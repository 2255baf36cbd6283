#pragma once

#include <gtest/gtest.h>
#include <zelcore/FileError.h>
#include <zelcore/IPlatformByteStream.h>

namespace zeltests {

/// The system's number of the error that opening the file ends with; fails the test when it is opened.
inline int OpeningError(const zelcore::ustring& path, zelcore::filesupport::IPlatformByteStream::Mode mode) {
    try {
        const zelcore::filesupport::IPlatformByteStream stream(zelcore::filesupport::File(path), mode);
    } catch (const zelcore::filesupport::FileError& error) {
        EXPECT_EQ(error.GetPath(), path);
        return error.GetSystemError();
    }
    ADD_FAILURE() << "was opened";
    return -1;
}

}  // namespace zeltests
