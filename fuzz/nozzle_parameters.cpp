#include <BRepCheck_Analyzer.hxx>
#include <fuzz/Documents.h>
#include <fuzz/Quiet.h>
#include <host/tools/NozzleParam.h>
#include <mechanism/mechanism.h>
#include <support/SampleTools.h>

// Numbers of torches: they give a whole tool, none, or a refusal that leaves the tool as it was.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int quiet = Silence();
    FuzzedDataProvider bytes(data, size);
    // Solids cost a thousand times the reading.
    const bool builds = bytes.ConsumeIntegralInRange(0, 15) == 0;
    const Json::Value json = fuzz::Document(bytes, sample::TorchParameters());
    try {
        NozzleParam().LoadFrom(json);
        if (!builds) {
            return quiet;
        }
        const auto [built, tool] = ToolEntity::CreateToolEntityByParameter(json);
        fuzz::Require(!built || (tool->GetFixMdls().size() == 3 && !tool->GetEndToolMdl().IsNull()));
        if (built) {
            const Json::Value before = tool->ToJson("");
            fuzz::Require(tool->UpdataToolParameterData(json));
            fuzz::Require(tool->ToJson("") == before);
        }
    } catch (const std::invalid_argument&) {
    }
    return quiet;
}
