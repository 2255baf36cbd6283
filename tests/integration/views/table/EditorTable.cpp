// Tries the editor of one plug-in of another maker; scripts/editor-table makes a table of it.
//   editor_table --list                        the plug-ins that are installed, one path a line
//   editor_table PATH RESULTFILE [PICTURE]     tries one, see EditorProbe
#include <cstdio>
#include <cstring>
#include <exception>

#include <zelui/Application.h>

#include "EditorProbe.h"
#include "support/InstalledPlugins.h"

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "--list") == 0) {
        for (const std::string& path : zeltests::FindInstalledPlugins()) std::printf("%s\n", path.c_str());
        return 0;
    }
    const zelui::Application application(argc, argv);
    if (argc < 3 || !zelui::Application::HasDisplay()) {
        std::fprintf(stderr, "usage: editor_table --list | PATH RESULTFILE [PICTURE], on a display\n");
        return 2;
    }
    try {
        zeltests::EditorProbe(argv[1], argv[2], argc > 3 ? argv[3] : "").Run();
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s: %s\n", argv[1], exception.what());
        return 1;
    }
    return 0;
}
