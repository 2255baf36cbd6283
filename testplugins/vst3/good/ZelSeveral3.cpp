// A factory with three effects, the last an instrument.
#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Vst3Factory factory(
        {{.name = "Several First", .id = MakeId(11), .subCategories = "Fx|EQ"},
         {.name = "Several Second", .id = MakeId(12), .subCategories = "Fx|Delay", .parameters = {"Time"}},
         {.name = "Several Third",
          .id = MakeId(13),
          .subCategories = "Instrument",
          .buses = {{Vst::kOutput, 2, "Output"}}}});
    return &factory;
}
