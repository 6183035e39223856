#include "commands.h"
#include "pxlcc.h"

namespace pxl::tool {

std::unique_ptr<CLI::App> commandLine() {
    auto program = std::make_unique<CLI::App>(
        "Exact, fast conversions of images between colour models, samplings, layouts and depths.", "pxlcc");
    program->require_subcommand(1);
    program->set_version_flag("-V,--version", std::string("pxlcc ") + pxlccGetLibVersion()->Version);
    addInfo(*program);
    addList(*program);
    addRun(*program);
    addDemo(*program);
    addGenerations(*program);
    addConvert(*program);
    addAccuracy(*program);
    addDemosaicQuality(*program);
    addReduce(*program);
    addSelftest(*program);
    addCompletion(*program);
    addManual(*program);
    return program;
}

}  // namespace pxl::tool
