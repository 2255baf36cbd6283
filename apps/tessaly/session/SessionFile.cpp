#include "SessionFile.h"

#include <zelcore/File.h>
#include <zelcore/FileUtils.h>
#include <zelcore/Utf.h>

#include "FilePath.h"
#include "FullPath.h"
#include "SessionError.h"
#include "SessionReader.h"
#include "SessionWriter.h"

namespace tessaly {

using zelcore::filesupport::File;
using zelcore::utility::FileUtils;
using zelcore::utility::UTF8to16;

namespace {

std::string GetFolder(const std::string& fullPath) { return FromFilePath(ToFilePath(fullPath).parent_path()); }

}  // namespace

SessionRecord SessionFile::Load(const std::string& path) {
    const std::string fullPath = GetFullPath(path);
    const File file(UTF8to16(fullPath));
    // A pipe may never give anything.
    if (!file.Exists()) throw SessionError("$$$/tessaly/SessionError/NoFile=There is no file @0.", {file.FullPath()});
    return SessionReader::Read(FileUtils::ReadFileToString(file, kMaxSize), GetFolder(fullPath));
}

void SessionFile::Save(const std::string& path, const SessionRecord& session) {
    const std::string fullPath = GetFullPath(path);
    const QByteArray text = SessionWriter::Write(session, GetFolder(fullPath));
    FileUtils::WriteStringToFileDurably(UTF8to16(fullPath), {text.data(), static_cast<std::size_t>(text.size())});
}

}  // namespace tessaly
