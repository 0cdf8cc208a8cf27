#include "boundary/boundary_reader.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>
#include <pulsenote_recorder.h>

#include <string>
#include <vector>

namespace veldtrim {
namespace {

namespace recorder = pulsenote_recorder;

class BoundaryReader : public testing::Test {
protected:
    bool read(const std::string& document) { return readFile(directory_.write("b.xml", document)); }

    bool readFile(const std::string& path) {
        model_.clear();
        recorder::clear();
        testing::internal::CaptureStdout();
        const bool result = readin_b_XML(path, model_);
        console_ = testing::internal::GetCapturedStdout();
        return result;
    }

    test::TemporaryDirectory directory_;
    std::string path_ = directory_.path("b.xml");
    BoundaryModel model_;
    std::string console_;
};

constexpr const char* point = "<point x='1.5' y='2' segmenttype='7'/>";

TEST_F(BoundaryReader, FillsTheModelInDocumentOrder) {
    const std::string triangle = std::string(point) + "<Point X='3' y=' 4e0 ' segmenttype='0'/>" +
                                 "<other/><point y='6' x='5' segmenttype='0' >in <b/>side</point>";
    ASSERT_TRUE(read("<?xml version='1.0'?><!-- a comment --><any><other/><tavelDGM>"
                     "<polygon id='99'/><group type='Boundaries'><polygon id='x'/></group>"
                     "<group type='boundaries'><point x='0'/><polygon id='17'>" +
                     triangle +
                     "</polygon></group><group/>"
                     "<group type='boundaries'><polygon id=' 3x'/><polygon id='17'>" +
                     triangle + "</polygon></group></tavelDGM><TavelDGM/></any>"));
    EXPECT_EQ(console_, "[readin_b_XML:]\n"
                        "Found TavelDGM\n"
                        "found group element\n"
                        "typestring = Boundaries\n"
                        "Unknown tag Boundaries\n"
                        "Ignoring blockfound group element\n"
                        "typestring = boundaries\n"
                        "current polygon id = 17 with type = 0\n"
                        " ipts= 3 points read for the boundary\n"
                        "found group element\n"
                        "typestring = \n"
                        "Unknown tag \n"
                        "Ignoring blockfound group element\n"
                        "typestring = boundaries\n"
                        "current polygon id = 3 with type = 0\n"
                        " ipts= 0 points read for the boundary\n"
                        "current polygon id = 17 with type = 0\n"
                        " ipts= 3 points read for the boundary\n"
                        "     ... finished\n");
    EXPECT_TRUE(recorder::events().empty());
    ASSERT_EQ(model_.polygons().size(), 3U);
    EXPECT_EQ(model_.polygons()[2].vertexIndices, (std::vector<std::int32_t>{3, 4, 5}));
    EXPECT_EQ(model_.polygons()[2].bounds.yMax, 6);
    EXPECT_EQ(model_.vertices()[1].y, 4);
}

TEST_F(BoundaryReader, ReportsItsFirstFailure) {
    const std::string open = "<r><TavelDGM><group type='boundaries'>";
    const std::string close = "</group></TavelDGM></r>";
    const std::string trace =
        "[readin_b_XML:]\nFound TavelDGM\nfound group element\ntypestring = boundaries\n";
    const auto polygon = [&](const std::string& points) {
        return open + "<polygon id='12'>" + point + point + points + "</polygon>" + close;
    };
    const std::string notFound = "Boundary file named " + path_ + " not found";
    const std::string noTavelDgm =
        "Could not find the TavelDGM tag in the boundary file " + path_ + "\n";
    const std::string noId = "Cannot find the id of a polygon in a group of type ";
    const std::string badPoint = "cannot read point 2 in polygon 12";
    const std::string polygonTrace = trace + "current polygon id = 12 with type = 0\n";
    struct Case {
        std::string document;
        std::string console;
        std::string message;
        std::size_t vertices = 0;
    };
    const std::vector<Case> cases{
        {"", "[readin_b_XML:]\n" + notFound + "\n", notFound},
        {"<a><b></a>", "[readin_b_XML:]\n" + notFound + "\n", notFound},
        {"<!-- nothing -->", "[readin_b_XML:]\n" + notFound + "\n", notFound},
        {"<TavelDGM><group/></TavelDGM>", "[readin_b_XML:]\n", noTavelDgm},
        {"<r><s><TavelDGM/></s></r>", "[readin_b_XML:]\n", noTavelDgm},
        {open + "<polygon/>" + close, trace, noId},
        {open + "<polygon id='a1'/>" + close, trace, noId},
        {open + "<polygon id='99999999999'/>" + close, trace, noId},
        {polygon("<point x='1' y='b' segmenttype='0'/>"), polygonTrace + badPoint + "\n",
         badPoint + "\n", 2},
        {polygon("<point x='1' y='1e999' segmenttype='0'/>"), polygonTrace + badPoint + "\n",
         badPoint + "\n", 2},
        {polygon("<point x='1' y='2'/>"), polygonTrace + badPoint + "\n", badPoint + "\n", 2},
        {polygon("<point y='2' segmenttype='0'/>"), polygonTrace + badPoint + "\n", badPoint + "\n",
         2},
    };
    for (const Case& each : cases) {
        EXPECT_FALSE(read(each.document)) << each.document;
        EXPECT_EQ(console_, each.console) << each.document;
        EXPECT_EQ(recorder::events(),
                  (std::vector<recorder::Event>{recorder::error(1, each.message)}));
        EXPECT_EQ(model_.vertices().size(), each.vertices);
        EXPECT_TRUE(model_.polygons().empty());
    }
    for (const std::string& path : {directory_.path("missing"), directory_.path("")}) {
        EXPECT_FALSE(readFile(path));
        EXPECT_EQ(recorder::events().at(0).text, "Boundary file named " + path + " not found");
    }
}

// Open quotes carry every search to the attributes of the last point, whose x is long: converting
// it for each point would take minutes.
TEST_F(BoundaryReader, ConvertsASharedNumberOnce) {
    constexpr std::size_t points = 40'000;
    constexpr std::size_t blanks = 2'000'000;
    std::string document = "<r><TavelDGM><group type='boundaries'><polygon id='1'>";
    for (std::size_t i = 0; i < points; ++i) {
        document += "<point a\"a' '\"/>";
    }
    document += "<point ' x=\"" + std::string(blanks, ' ') +
                "1.5&amp;\" y=\"2&lt;\" segmenttype=\"0\"/></polygon></group></TavelDGM></r>";
    EXPECT_FALSE(read(document)) << "the last point itself has no attribute";
    EXPECT_TRUE(console_.ends_with("cannot read point 40000 in polygon 1\n"));
    ASSERT_EQ(model_.vertices().size(), points);
    EXPECT_EQ(model_.vertices().back().x, 1.5);
    EXPECT_EQ(model_.vertices().back().y, 2);
}

TEST_F(BoundaryReader, AcceptsAFileWithoutBoundaries) {
    EXPECT_TRUE(read("<r><TavelDGM/></r>"));
    EXPECT_EQ(console_, "[readin_b_XML:]\nFound TavelDGM\n     ... finished\n");
    EXPECT_FALSE(model_.isInBoundary({0, 0}));
}

} // namespace
} // namespace veldtrim
