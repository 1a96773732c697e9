#include <CLI/CLI.hpp>
#include <app/commands/Completion.h>
#include <ostream>

namespace cell {

namespace {

std::string LongOptions(const CLI::App& app) {
    std::string names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names += (names.empty() ? "--" : " --") + name;
        }
    }
    return names;
}

} // namespace

void PrintCompletion(const CLI::App& app, std::ostream& out) {
    std::string commands;
    std::string cases;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        commands += (commands.empty() ? "" : " ") + command->get_name();
        cases += "        " + command->get_name() + ") options=\"" + LongOptions(*command) + "\" ;;\n";
    }
    out << "_mechanism_cell() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} options\n"
           "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
           "        COMPREPLY=($(compgen -W \""
        << commands << ' ' << LongOptions(app)
        << "\" -- \"$word\"))\n"
           "        return\n"
           "    fi\n"
           "    case ${COMP_WORDS[1]} in\n"
        << cases
        << "    esac\n"
           "    case $word in\n"
           "        -*) COMPREPLY=($(compgen -W \"$options\" -- \"$word\")) ;;\n"
           "        *) COMPREPLY=($(compgen -f -- \"$word\")) ;;\n"
           "    esac\n"
           "}\n"
           "complete -o filenames -F _mechanism_cell mechanism-cell\n";
}

} // namespace cell
