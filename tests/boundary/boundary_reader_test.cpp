#include "boundary/boundary_reader.h"
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

} // namespace
} // namespace veldtrim
