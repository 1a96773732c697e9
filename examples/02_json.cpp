// States as JSON: exact both ways, and a bad document is refused by name instead of half read.
#include "common/Registrar.h"
#include <iostream>
#include <json/json.h>
#include <mechanism/mechanism.h>

int main() {
    Registrar::Register(7);
    GrpState state(7);
    state.SetValues(std::vector<double>{0.1, -0.2, 1.0 / 3.0, 0, 0.5, 0});
    state.SetLocEuler(0, LocEuler(gp_Pnt(900, 0, 1200), gp_Pnt(0, 1.57, 0)));
    state.SetCmdTypeAndCmd(MoveCmdLogical, "arc on");

    Json::StreamWriterBuilder compact;
    compact["indentation"] = "";
    const std::string text = Json::writeString(compact, state.ToJson());
    std::cout << text << "\n";

    Json::Value document;
    Json::CharReaderBuilder reader;
    std::string errors;
    std::istringstream in(text);
    Json::parseFromStream(reader, in, &document, &errors);

    GrpState read(7);
    std::cout << "read: " << read.FromJson(document) << ", equal: " << (read == state)
              << ", text: " << read.GetLogicalCmd() << "\n";

    // Several systems at one instant.
    Registrar::Register(8);
    ContextState context;
    context.SetValues(7, state);
    std::cout << "systems in the context: " << context.ToJson()["systems"].size() << "\n";

    document["system_index"] = Json::UInt64(99); // nobody registered this one
    try {
        GrpState(7).FromJson(document);
    } catch (const std::out_of_range& error) {
        std::cout << "refused: " << error.what() << "\n";
    }
}
