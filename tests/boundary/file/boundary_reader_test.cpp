#include "boundary/file/boundary_reader.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>
#include <pulsenote_recorder.h>

#include <string>
#include <vector>

namespace veldtrim {
namespace {

// What the reader says, and every failure, is compared in whole runs; here is the model it leaves.
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

    // After a failure: the polygons before, and the vertices of the one at fault.
    model.clear();
    ASSERT_FALSE(read(group + "<polygon id='5'>" + points + "<point/></polygon></group>", model));
    EXPECT_EQ(model.polygons().size(), 2U);
    EXPECT_EQ(model.vertices().size(), 4U);
}

// Open quotes carry every search to the attributes of the last point, whose x is long: converting
// it for each point would take minutes.
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

} // namespace
} // namespace veldtrim
