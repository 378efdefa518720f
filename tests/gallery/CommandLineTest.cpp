#include "gallery/SceneTable.h"
#include "tests/gallery/ProgramTest.h"

namespace tidalume::gallery {

using CommandLine = ProgramTest;

TEST_F(CommandLine, BadInputGetsOneLineAndStatusTwo) {
    write("broken.png", "\x89PNG\r\n\x1A\n");
    write("text", "no picture");
    const std::pair<const char*, const char*> rows[] = {
        {"--scene volcano", "--scene: there is no scene \"volcano\"; the scenes are: water, waves"},
        {"--size 0x10", "--size: \"0x10\" is not WIDTHxHEIGHT"},
        {"--size 100000x10", "--size 100000x10: width 100000 is above the driver's limit of"},
        {"--size 99999999999x10", "--size: \"99999999999x10\" is not WIDTHxHEIGHT"},
        {"--frames 0", "--frames: Value 0 not in range"},
        {"--background absent.png", "--background absent.png: there is no such file"},
        {"--background broken.png", "--background broken.png: broken PNG"},
        {"--out text", "--out text: "},
    };
    for (const auto& [arguments, reason] : rows)
        isRefused(std::string("'" GALLERY_PROGRAM "' ") + arguments, reason);
    EXPECT_FALSE(std::filesystem::exists(path("out"))) << "bad input leaves no folder behind";
}

TEST_F(CommandLine, SameSeedSameBytes) {
    headless::writePng(path("photo.png"), Picture(31, 17));
    const std::string program = "'" GALLERY_PROGRAM "' --size 61x97 --frames 9 --background photo.png ";
    runsWell(program + "--seed 3 --out all");
    runsWell(program + "--seed 3 --out one --scene metaballs");
    runsWell(program + "--seed 4 --out other --scene metaballs");

    EXPECT_EQ(load("all/metaballs.png"), load("one/metaballs.png")) << "alone as among all";
    EXPECT_EQ(load("all/metaballs.webp"), load("one/metaballs.webp"));
    EXPECT_NE(load("all/metaballs.png"), load("other/metaballs.png"));
    for (const SceneEntry& entry : sceneTable())
        EXPECT_THAT(load("all/index.html"), testing::HasSubstr("src=\"" + std::string(entry.name) + ".webp\""));
}

} // namespace tidalume::gallery
