#include "bench/phones/Report.h"
#include "commandline/Parse.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

using namespace tidalume;
using namespace tidalume::phones;

namespace {

struct Options {
    std::string out = "out/phones";
    std::string print;
};

void write(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path);
    file << text;
    if (!file.flush()) throw std::runtime_error("cannot write " + path.string());
    std::cout << path.string() << "\n";
}

int run(int argc, char** argv) {
    CLI::App app(
        "Says what the drivers of phones' GPUs make of Tidalume's programs and of their plain forms. Ends with "
        "status 1 where a fragment program needs more than its plain form, which it should not.",
        "tidalume-phones");
    Options options;
    app.add_option("--out", options.out, "Folder for tables.md and results.json")
        ->check(namedCheck("folder"))
        ->capture_default_str();
    // What this program runs itself with; an empty group keeps it out of the help.
    app.add_option("--print", options.print)->check(CLI::IsMember({"library", "plain"}))->group("");
    parse(app, argc, argv);
    if (!options.print.empty()) {
        printCompilation(options.print == "plain");
        return 0;
    }

    std::vector<Result> results;
    for (const Gpu& gpu : gpus) {
        std::cout << gpu.name << std::endl;
        results.push_back({gpu, compile(gpu, false), compile(gpu, true)});
    }
    std::filesystem::create_directories(options.out);
    write(options.out + "/tables.md", markdownTables(results));
    write(options.out + "/results.json", json(results));
    bool passed = true;
    for (const Excess& excess : excesses(results)) {
        std::cout << excess.text << (excess.excuse.empty() ? ": too many" : "; allowed: " + excess.excuse) << "\n";
        passed = passed && !excess.excuse.empty();
    }
    return passed ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "tidalume-phones: " << error.what() << "\n";
        return 2;
    }
}
