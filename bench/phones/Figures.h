#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// What the drivers of phones' GPUs say about the library's programs.
namespace tidalume::phones {

/// A driver's statistics of a shader, by the names that it gives them: "inst", "cycles", "spills".
using Figures = std::map<std::string, double>;

/// By stage of the program, as the driver calls it: "fragment", "vertex", "position".
using Program = std::map<std::string, Figures>;

/// What a driver says in one process.
struct Compilation {
    std::string driver;                                      ///< vendor, renderer and version
    std::vector<std::pair<std::string, std::string>> limits; ///< what is limited, and how
    std::vector<std::string> names;                          ///< of the programs, in the order in which they were built
    std::map<std::string, Program> programs;
    std::vector<std::pair<std::string, std::vector<int>>> calls; ///< of the library in a frame of something, by kind
};

/// A figure that the tables show.
struct Column {
    const char* heading;
    const char* figure; ///< the driver's name of it
    double scale;       ///< of what the tables show for 1
    bool bounded;       ///< the library's form must not have more of it than the plain form
};

/// GPUs whose drivers say the same about programs.
struct Family {
    std::vector<Column> columns;
    std::vector<std::string> units; ///< figures of which "cycles" is the largest
};

struct Gpu {
    const char* name; ///< as scripts/with-phone-driver knows it
    const Family* family;
};

/// The phones' GPUs first, in the order in which their word counts where they disagree.
extern const std::vector<Gpu> gpus;

/// Which GL calls are counted, each kind by itself.
extern const std::vector<const char*> callKinds;

/// Prints how many GL calls the library makes in usual frames of its effects, for `compile` to read.
/// @param operations     of all effects, by name
/// @param width, height  of the screen
void printCalls(const std::map<std::string, std::function<void()>>& operations, int width, int height);

/// Compiles and draws every program in this process, and prints what the driver says, for `compile` to read.
/// @param plain  whether in the plain form, where there is one
void printCompilation(bool plain);

/// Runs this program on the driver of a GPU. Throws std::runtime_error where it fails or says nothing of a program.
Compilation compile(const Gpu& gpu, bool plain);

} // namespace tidalume::phones
