#include "boundary/file/boundary_reader.h"
#include "boundary/file/boundary_walk.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>
#include <pulsenote_recorder.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace veldtrim {
namespace {

// The tests of whole runs compare what the reader prints and reports; these look at the model.
TEST(BoundaryReader, FillsTheModelInDocumentOrder) {
    const test::TemporaryDirectory directory;
    const auto read = [&](const std::string& groups, BoundaryModel& model) {
        const std::string text = "<r><other/><tavelDGM>" + groups + "</tavelDGM><TavelDGM/></r>";
        return readin_b_XML(directory.write("b.xml", text), model);
    };
    const std::string points = "<point x='1.5' y='2' segmenttype='7'/><other/>"
                               "<Point y=' 4e0 ' x='3' segmenttype='0' >in <b/>side</point>";
    const std::string group = "<polygon id='x'/><group type='boundaries'><point x='0'/>"
                              "<polygon id=' 3x'/><polygon id='17'>" +
                              points + "</polygon>";
    pulsenote_recorder::clear();
    BoundaryModel model;
    ASSERT_TRUE(read(group + "</group>" + group + "</group>", model));
    EXPECT_TRUE(pulsenote_recorder::events().empty());
    ASSERT_EQ(model.polygons().size(), 4U);
    EXPECT_TRUE(model.polygons()[2].vertexIndices.empty());
    EXPECT_EQ(model.polygons()[3].vertexIndices, (std::vector<std::int32_t>{2, 3}));
    EXPECT_EQ(model.polygons()[3].bounds.yMax, 4);
    EXPECT_EQ(model.vertices()[2].x, 1.5);

    // After a failure the polygons before it stay, and the vertices of the one at fault.
    model.clear();
    ASSERT_FALSE(read(group + "<polygon id='5'>" + points + "<point/></polygon></group>", model));
    EXPECT_EQ(model.polygons().size(), 2U);
    EXPECT_EQ(model.vertices().size(), 4U);
}

// Quotes left open lead every search to the attributes of the last point, whose x is long.
// Converting it again for each point would take minutes.
TEST(BoundaryReader, ConvertsASharedNumberOnce) {
    constexpr std::size_t points = 40'000;
    constexpr std::size_t blanks = 2'000'000;
    std::string document = "<r><TavelDGM><group type='boundaries'><polygon id='1'>";
    for (std::size_t i = 0; i < points; ++i) {
        document += "<point a\"a' '\"/>";
    }
    document += "<point ' x=\"" + std::string(blanks, ' ') +
                "1.5&amp;\" y=\"2&lt;\" segmenttype=\"0\"/></polygon></group></TavelDGM></r>";
    const test::TemporaryDirectory directory;
    BoundaryModel model;
    EXPECT_FALSE(readin_b_XML(directory.write("b.xml", document), model))
        << "the last point itself has no attribute";
    ASSERT_EQ(model.vertices().size(), points);
    EXPECT_EQ(model.vertices().back().x, 1.5);
    EXPECT_EQ(model.vertices().back().y, 2);
}

/// Writes the walk as one line of text.
class Transcript : public BoundarySink {
public:
    std::ostringstream text;

    void onTavelDgm() override { text << "TavelDGM"; }
    void onGroup(std::string_view type, bool isRead) override {
        text << (isRead ? " read " : " ignored ") << type;
    }
    void onPolygon(std::int32_t id) override { text << " #" << id; }
    void onPolygonRead(std::size_t points) override { text << "=" << points; }
    void onFault(const BoundaryFault& fault) override {
        text << " fault/" << static_cast<int>(fault.kind) << '/' << fault.polygon << '/'
             << fault.point << '/' << fault.attribute << '/' << fault.value << '/'
             << fault.parseError;
    }
};

TEST(BoundaryWalk, ReportsWhatItMeets) {
    const test::TemporaryDirectory directory;
    const auto transcript = [&](const std::string& document) {
        BoundaryModel model;
        Transcript sink;
        const bool isRead = walkBoundaryFile(directory.write("b.xml", document), model, sink);
        EXPECT_EQ(isRead, sink.text.str().find("fault") == std::string::npos);
        return sink.text.str();
    };
    const auto groups = [&](const std::string& inside) {
        return transcript("<r><TavelDGM><group type='roads'/><group type='boundaries'>"
                          "<polygon id='7'/>" +
                          inside + "</group></TavelDGM></r>");
    };
    const std::string begin = "TavelDGM ignored roads read boundaries #7=0";
    const std::string point = "<polygon id='8'><point x='1' y='2' segmenttype='0'/><point ";
    EXPECT_EQ(groups(""), begin);
    EXPECT_EQ(groups(point + "x='1' y='2' segmenttype='0'/></polygon>"), begin + " #8=2");
    EXPECT_EQ(groups("<polygon id='a&lt;'/>"), begin + " fault/2/1/0/id/a&lt;/");
    EXPECT_EQ(groups(point + "y='2'/></polygon>"), begin + " #8 fault/3/1/1/x//");
    EXPECT_EQ(groups(point + "x='1' y='b'/></polygon>"), begin + " #8 fault/3/1/1/y/b/");
    EXPECT_EQ(transcript("<r/>"), " fault/1/0/0///");
    EXPECT_EQ(transcript(""), " fault/0/0/0///");
    EXPECT_EQ(transcript("<r>"), " fault/0/0/0///Element tag not found");
}

} // namespace
} // namespace veldtrim
