#pragma once

#include <cstddef>
#include <fstream>
#include <string>

#include <zelaudiofilterhost/TechnologyType.h>

#include "integration/views/ViewStage.h"

namespace zeltests {

/// Opens the editor of one plug-in through the library's view, twice, and writes down what happened: a line "key=value"
/// for each thing, as soon as it is known, so that the last one says how far a plug-in came that took the process
/// along. What an editor leaves behind is looked for under a bare window as well, where it cannot be the view's.
class EditorProbe {
public:
    /// `picture` may be empty.
    EditorProbe(const std::string& path, const std::string& resultFile, const std::string& picture);

    void Run();

private:
    /// What there is now of what an editor may leave.
    struct Count {
        long windows;
        long descriptors;
    };

    static Count CountNow();
    void Say(const std::string& key, const std::string& value);
    void Say(const std::string& key, long value) { Say(key, std::to_string(value)); }
    bool ShowAndDraw();
    void IdleForASecond();
    void Close();
    void CountUnderABareWindow();
    void SayLeft(const std::string& prefix, const Count& before);

    const std::string mPath;
    const zelaudiofilterhost::TechnologyType mTechnology;
    const std::string mPicture;
    std::ofstream mResult;
    ViewStage mStage;
};

}  // namespace zeltests
