// The driver in this process, without the plug-in, so that it runs under the sanitizers: broken
// files, and features that cannot be written.

#include "gdal/driver.h"
#include "support/temporary_directory.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <cpl_vsi.h>
#include <gdal_priv.h>
#include <gtest/gtest.h>
#include <ogrsf_frmts.h>

namespace {

using namespace std::string_literals;

class Gdal : public testing::Environment {
public:
    void SetUp() override {
        CPLSetErrorHandler(CPLQuietErrorHandler);
        RegisterOGRVeldtrim();
    }
    void TearDown() override { GDALDestroy(); }
};
const auto* const gdal = testing::AddGlobalTestEnvironment(new Gdal);

/// A virtual file with these bytes, or only its name.
class VirtualFile {
public:
    VirtualFile() = default;
    explicit VirtualFile(const std::string& bytes) {
        VSILFILE* const file = VSIFOpenL(name.c_str(), "wb");
        VSIFWriteL(bytes.data(), 1, bytes.size(), file);
        VSIFCloseL(file);
    }
    ~VirtualFile() { VSIUnlink(name.c_str()); }
    VirtualFile(const VirtualFile&) = delete;
    VirtualFile& operator=(const VirtualFile&) = delete;

    const std::string name = "/vsimem/boundary.xml";
};

GDALDatasetUniquePtr openFile(const std::string& name, const char* option = nullptr) {
    CPLErrorReset();
    const char* const options[] = {option, nullptr};
    return GDALDatasetUniquePtr(GDALDataset::Open(
        name.c_str(), GDAL_OF_VECTOR | GDAL_OF_VERBOSE_ERROR, nullptr, options, nullptr));
}

/// All that a layer says of its features, with every bit of their coordinates.
std::string walk(OGRLayer& layer) {
    std::string said = std::to_string(layer.GetFeatureCount()) + " features\n";
    OGREnvelope extent;
    said += std::to_string(static_cast<int>(layer.GetExtent(&extent))) + '\n';
    for (const OGRFeatureUniquePtr& feature : layer) {
        const OGRFeatureUniquePtr same(layer.GetFeature(feature->GetFID()));
        EXPECT_TRUE(same && same->Equal(feature.get()));
        said += std::to_string(feature->GetFieldAsInteger("id")) + ',' +
                std::to_string(feature->GetFieldAsInteger("group"));
        const OGRGeometry* const geometry = feature->GetGeometryRef();
        if (geometry != nullptr) {
            std::vector<unsigned char> bytes(geometry->WkbSize());
            geometry->exportToWkb(wkbNDR, bytes.data());
            said.append(bytes.begin(), bytes.end());
        }
        said += '\n';
    }
    return said;
}

/// Opens the file and walks through it; an empty text if it cannot be opened, which must be an
/// error.
std::string walkFile(const std::string& name) {
    const GDALDatasetUniquePtr file = openFile(name);
    EXPECT_EQ(CPLGetLastErrorType() == CE_Failure, file == nullptr) << CPLGetLastErrorMsg();
    return file ? walk(*file->GetLayer(0)) : "";
}

const std::string point = R"(<point x="1" y="2" segmenttype="0"/>)";

std::string polygonsXml(const std::string& polygons) {
    return "<project><TavelDGM><group type=\"boundaries\">" + polygons +
           "</group></TavelDGM></project>";
}
std::string pointsXml(const std::string& points) {
    return polygonsXml("<polygon id=\"1\">" + points + "</polygon>");
}
std::string pointXml(const std::string& attributes) {
    return pointsXml("<point " + attributes + "/>");
}
std::string repeated(std::size_t times, std::string_view text) {
    std::string all;
    for (; times > 0; --times) {
        all += text;
    }
    return all;
}

struct SourceCase {
    std::string bytes;
    const char* error;    ///< part of the message; null if the file is opened
    std::size_t features; ///< of a file that is opened
};

const char* const unknown = "not recognized as a supported file format";

const SourceCase sources[] = {
    {pointsXml(point + point + point), nullptr, 1},
    {pointsXml(point), nullptr, 1},
    {pointsXml(""), nullptr, 1},
    {polygonsXml(""), nullptr, 0},
    {"<p><tavelDGM/></p>", nullptr, 0},
    {"\xEF\xBB\xBF" + pointsXml(point), nullptr, 1},
    {" \r\n\t" + pointsXml(point), nullptr, 1},
    {"<!--" + std::string(2000, '-') + "-->" + pointsXml(point), nullptr, 1},
    {"<!--" + std::string(70000, '-') + "-->" + pointsXml(point), unknown, 0},
    {"<?xml version='1.0'?><!DOCTYPE p [<!ENTITY a \"b\">]>" + pointsXml(point), nullptr, 1},
    {pointsXml("<![CDATA[<point>]]><!-- <point> -->" + point), nullptr, 1},
    {pointsXml(repeated(100000, "<a>") + repeated(100000, "</a>")), nullptr, 1},
    {pointsXml(repeated(100000, "<a>")), "does not close the innermost element", 0},
    {polygonsXml(repeated(3000, "<polygon id='7'>" + point + "</polygon>")), nullptr, 3000},
    {"<project><TavelDGM><group type='x'/><group/></TavelDGM></project>", nullptr, 0},
    {pointXml("x='1e308' y='-1e308' segmenttype='-1'"), nullptr, 1},
    {pointXml("x='5e-324' y='1e-300' segmenttype='0'"), nullptr, 1},
    {pointXml("x='1e400' y='1' segmenttype='0'"), "x=\"1e400\", which is not a number", 0},
    {pointXml("x='nan' y='1' segmenttype='0'"), "x=\"nan\"", 0},
    {pointXml("x='1' segmenttype='0'"), "has no y", 0},
    {pointXml("x='1' y='1' segmenttype='a'"), "which is not an integer", 0},
    {pointXml("x='inf' y='1' segmenttype='0'"), "x=\"inf\"", 0},
    {pointXml("x='' y='1' segmenttype='0'"), "has no x", 0},
    {pointXml("x=1 y=2 segmenttype=0"), "point number 1 of polygon 1", 0},
    {pointXml("x='1' y='1'"), "has no segmenttype", 0},
    {pointXml("x='\xff\xfe' y='1' segmenttype='0'"), "which is not a number", 0},
    {polygonsXml("<polygon/>"), "polygon number 1 has no id", 0},
    {polygonsXml("<polygon id='one'/>"), "id=\"one\", which is not an integer", 0},
    {pointsXml("<point"), "does not close the innermost element", 0},
    {pointsXml("<point x=\""), "does not close the innermost element", 0},
    {pointsXml("<![CDATA["), "does not end", 0},
    {pointsXml("</group>"), "does not close the innermost element", 0},
    {polygonsXml("<polygon id='2147483648'/>"), "which is not an integer", 0},
    {polygonsXml("<polygon id='-2147483648'/>"), nullptr, 1},
    {pointsXml("<!-- "), "does not end", 0},
    {pointsXml("<\"point\"/>"), "is followed by a quote", 0},
    {pointsXml(point + "\0"s + point), "is not complete", 0},
    {pointsXml(point) + "\0 more"s, nullptr, 1},
    {"<TavelDGM/>", "has no element TavelDGM below its root", 0},
    {"<!-- <TavelDGM> --><a/>", "has no element TavelDGM below its root", 0},
    {"<!-- <TavelDGM> -->", "is not complete", 0},
    {"<project><TavelDGMs/></project>", unknown, 0},
    {"<project/>", unknown, 0},
    {"a" + pointsXml(point), unknown, 0},
    {"\0"s + pointsXml(point), unknown, 0},
    {"\xFF\xFE<\0T\0a\0v\0e\0l\0D\0G\0M\0>\0"s, unknown, 0},
    {R"({"type":"<TavelDGM>"})", unknown, 0},
    {std::string(5000, '<'), unknown, 0},
    {std::string(5000, ' '), unknown, 0},
    {"<", unknown, 0},
    {"", unknown, 0},
};

/// A local file and a virtual one are read by different functions, which must agree.
void openOrRefuse(const SourceCase& source) {
    SCOPED_TRACE(source.bytes.substr(0, 200));
    const VirtualFile file(source.bytes);
    const std::string walked = walkFile(file.name);
    if (source.error != nullptr) {
        EXPECT_EQ(walked, "");
        EXPECT_NE(std::string(CPLGetLastErrorMsg()).find(source.error), std::string::npos)
            << CPLGetLastErrorMsg();
    } else {
        EXPECT_EQ(walked.substr(0, walked.find('\n')),
                  std::to_string(source.features) + " features");
    }
    const veldtrim::test::TemporaryDirectory directory;
    const bool hasNul = source.bytes.find('\0') != std::string::npos;
    if (!hasNul || source.error == nullptr) {
        EXPECT_EQ(walkFile(directory.write("boundary.xml", source.bytes)), walked);
    }
}

TEST(Driver, OpensOrRefusesFiles) {
    for (const SourceCase& source : sources) {
        openOrRefuse(source);
    }
}

TEST(Driver, TakesFilesThatEndAnywhere) {
    const std::string whole =
        polygonsXml("<polygon id='1'>" + point + "</polygon><polygon id='2'>" + repeated(4, point) +
                    "</polygon>");
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const VirtualFile file(whole.substr(0, size));
        EXPECT_EQ(walkFile(file.name).empty(), size < whole.size()) << size;
    }
}

TEST(Driver, FiltersAndNamesItsLayer) {
    const VirtualFile file(polygonsXml(
        "<polygon id='5'>" + point + "</polygon><polygon id='6'>" + point +
        "<point x='9' y='2' segmenttype='0'/><point x='1' y='8' segmenttype='0'/></polygon>"));
    const GDALDatasetUniquePtr opened = openFile(file.name, "SRS=EPSG:25832");
    ASSERT_TRUE(opened);
    EXPECT_NE(std::string(CPLGetLastErrorMsg()).find("1 of 2"), std::string::npos);
    OGRLayer& layer = *opened->GetLayer(0);
    EXPECT_STREQ(layer.GetName(), "boundary");
    EXPECT_STREQ(layer.GetSpatialRef()->GetAuthorityCode(nullptr), "25832");
    EXPECT_EQ(layer.GetGeomType(), wkbUnknown);
    layer.SetSpatialFilterRect(3, 3, 4, 4);
    EXPECT_EQ(layer.GetFeatureCount(), 1);
    layer.SetSpatialFilter(nullptr);
    layer.SetAttributeFilter("id = 5");
    EXPECT_EQ(layer.GetFeatureCount(), 1);
    EXPECT_EQ(OGRFeatureUniquePtr(layer.GetNextFeature())->GetFID(), 1);
    EXPECT_FALSE(OGRFeatureUniquePtr(layer.GetFeature(3)));
    EXPECT_FALSE(OGRFeatureUniquePtr(layer.GetFeature(0)));
    EXPECT_FALSE(openFile(file.name, "SRS=nowhere"));
    EXPECT_FALSE(GDALDatasetUniquePtr(
        GDALDataset::Open(file.name.c_str(), GDAL_OF_VECTOR | GDAL_OF_UPDATE)));
    EXPECT_EQ(GDALDriver::FromHandle(GDALGetDriverByName("Veldtrim"))->Delete(file.name.c_str()),
              CE_Failure);
    EXPECT_TRUE(openFile(file.name));
}

struct FeatureCase {
    const char* wkt; ///< null for a feature without geometry
    const char* error;
    std::size_t polygons;
};

const FeatureCase features[] = {
    {"POLYGON((0 0,200 0,200 9,0 0))", nullptr, 1},
    {"POLYGON ZM((0 0 5 6,200 0 5 6,200 9 5 6,0 0 5 6))", nullptr, 1},
    {"MULTIPOLYGON(((0 0,200 0,200 9,0 0)),((0 0,1 0,1 1,0 1,0 0)))", nullptr, 2},
    {"TRIANGLE((0 0,200 0,200 9,0 0))", nullptr, 1},
    {"CURVEPOLYGON(COMPOUNDCURVE(CIRCULARSTRING(0 0,1 1,2 0),(2 0,0 0)))", nullptr, 1},
    {"POLYGON((0 0,200 0,200 9,0 0),(100 1,101 1,101 2,100 1))", "has a hole", 0},
    {"LINESTRING(0 0,1 1)", "is a Line String", 0},
    {"POINT(0 0)", "is a Point", 0},
    {"MULTIPOINT((0 0))", "is a Multi Point", 0},
    {"GEOMETRYCOLLECTION(POLYGON((0 0,9 0,9 9,0 0)))", "is a Geometry Collection", 0},
    {"TIN(((0 0 0,9 0 0,9 9 0,0 0 0)))", "is a TIN", 0},
    {"POLYGON EMPTY", "has an empty geometry", 0},
    {"MULTIPOLYGON(((0 0,9 0,9 9,0 0)),EMPTY)", "has an empty geometry", 0},
    {nullptr, "has an empty geometry", 0},
    {"POLYGON((0 0,9 0,0 0))", "fewer than three vertices", 0},
    {"POLYGON((0 0,1e999 0,9 9,0 0))", "not a finite number", 0},
};

GDALDatasetUniquePtr createFile(const std::string& name, const char* option = nullptr) {
    CPLErrorReset();
    const char* const options[] = {option, nullptr};
    GDALDriver* const driver = GDALDriver::FromHandle(GDALGetDriverByName("Veldtrim"));
    return GDALDatasetUniquePtr(driver->Create(name.c_str(), 0, 0, 0, GDT_Unknown, options));
}

OGRErr addFeature(OGRLayer& layer, const char* wkt) {
    OGRFeature feature(layer.GetLayerDefn());
    if (wkt != nullptr) {
        OGRGeometry* geometry = nullptr;
        OGRGeometryFactory::createFromWkt(wkt, nullptr, &geometry);
        feature.SetGeometryDirectly(geometry);
    }
    return layer.CreateFeature(&feature);
}

bool exists(const std::string& name) {
    VSIStatBufL status;
    return VSIStatL(name.c_str(), &status) == 0;
}

/// A feature that is refused leaves no file, even if the program goes on.
void writeOrRefuse(const FeatureCase& feature, const std::string& name) {
    SCOPED_TRACE(feature.wkt != nullptr ? feature.wkt : "no geometry");
    GDALDatasetUniquePtr created = createFile(name);
    OGRLayer& layer = *created->CreateLayer("area");
    EXPECT_EQ(addFeature(layer, "POLYGON((0 0,1 0,1 1,0 0))"), OGRERR_NONE);
    EXPECT_EQ(addFeature(layer, feature.wkt) == OGRERR_NONE, feature.error == nullptr);
    if (feature.error != nullptr) {
        const std::string message = CPLGetLastErrorMsg();
        EXPECT_NE(message.find("feature number 2 "s), std::string::npos) << message;
        EXPECT_NE(message.find(feature.error), std::string::npos) << message;
    }
    EXPECT_EQ(addFeature(layer, "POLYGON((0 0,1 0,1 1,0 0))"), OGRERR_NONE);
    CPLErrorReset();
    EXPECT_FALSE(exists(name)) << "before the file is complete";
    created.reset();
    EXPECT_EQ(CPLGetLastErrorType() == CE_Failure, feature.error != nullptr);
    ASSERT_EQ(exists(name), feature.error == nullptr);
    if (feature.error == nullptr) {
        const auto polygons = static_cast<GIntBig>(2 + feature.polygons);
        EXPECT_EQ(openFile(name)->GetLayer(0)->GetFeatureCount(), polygons);
        EXPECT_FALSE(createFile(name)) << "the file exists";
        EXPECT_TRUE(openFile(name));
    }
}

TEST(Driver, WritesOrRefusesFeatures) {
    const veldtrim::test::TemporaryDirectory directory;
    for (const FeatureCase& feature : features) {
        const VirtualFile virtualFile;
        writeOrRefuse(feature, virtualFile.name);
        writeOrRefuse(feature, directory.path(std::to_string(&feature - features) + ".xml"));
    }
}

TEST(Driver, LeavesNoFileWithoutPolygons) {
    const VirtualFile file;
    createFile(file.name);
    EXPECT_FALSE(exists(file.name)) << "without a layer";
    createFile(file.name)->CreateLayer("area");
    EXPECT_FALSE(exists(file.name)) << "without a polygon";
    EXPECT_FALSE(createFile(file.name, "HOLES=KEEP"));
}

} // namespace
