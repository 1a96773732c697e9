#include <gmock/gmock.h>
#include <string>
#include <support/Draws.h>

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    const std::string dial = "--draws=";
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument.starts_with(dial)) {
            Draws::Count() = std::stoi(argument.substr(dial.size()));
        }
    }
    return RUN_ALL_TESTS();
}
