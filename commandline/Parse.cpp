#include "commandline/Parse.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace tidalume {

CLI::Validator numberCheck(std::int64_t least, std::int64_t most) {
    const auto check = [=](const std::string& text) -> std::string {
        std::int64_t number = 0;
        const bool read = CLI::detail::lexical_cast(text, number) && number >= least && number <= most;
        return read ? ""
                    : "\"" + text + "\" is not a whole number from " + std::to_string(least) + " to " +
                          std::to_string(most);
    };
    return {check, ""};
}

CLI::Validator namedCheck(const std::string& kind) {
    return {[kind](const std::string& name) { return name.empty() ? "no " + kind + " is named" : ""; }, ""};
}

void parse(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        std::exit(app.exit(help));
    } catch (const CLI::ParseError& error) {
        std::string message = error.what();
        std::replace(message.begin(), message.end(), '\n', ' ');
        std::cerr << app.get_name() << ": " << message << '\n';
        std::exit(2);
    }
}

} // namespace tidalume
