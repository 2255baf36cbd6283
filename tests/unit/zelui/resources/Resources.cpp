// A module that carries texts, as a library carries its layout archives.
#include <zelcore/Export.h>

extern "C" {

ZEL_DLL_EXPORT extern const char zel_resource_xml_Layout[] = {'<', 'a', '/', '>', '\0', '!'};
ZEL_DLL_EXPORT extern const unsigned long zel_resource_xml_Layout_size = sizeof(zel_resource_xml_Layout);

ZEL_DLL_EXPORT extern const char zel_resource_xml_Empty[] = {'x'};
ZEL_DLL_EXPORT extern const unsigned long zel_resource_xml_Empty_size = 0;

// One that says it is larger than anything that makes sense.
ZEL_DLL_EXPORT extern const char zel_resource_xml_Huge[] = {'x'};
ZEL_DLL_EXPORT extern const unsigned long zel_resource_xml_Huge_size = (16ul << 20) + 1;

ZEL_DLL_EXPORT extern const char zel_resource_xml_Sizeless[] = {'x'};
}
