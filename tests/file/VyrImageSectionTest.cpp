#include <gtest/gtest.h>

#include <cstdlib>

#include "RecordTestSupport.h"
#include "file/VyrJpegData.h"
#include "vyrbase/data/VyrImageEntity.h"
#include "vyrbase/data/VyrImageRedyEntity.h"
#include "vyrbase/file/VyrEncodeBase64.h"

using recordtest::LoadText;
using recordtest::SaveText;
using recordtest::Section;

namespace {

wxImage Picture(int w, int h, unsigned char blue) {
    wxImage image(w, h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            image.SetRGB(x, y, static_cast<unsigned char>(x * 255 / w),
                         static_cast<unsigned char>(y * 255 / h), blue);
    return image;
}

bool HaveTool(const char* tool) {
    return std::system((std::string("command -v ") + tool + " >/dev/null 2>&1").c_str()) == 0;
}

std::vector<VyrImageRedyEntity*> Pictures(VyrBaseData& doc) {
    std::vector<VyrImageRedyEntity*> all;
    wxVyrListEntityNode* node = doc.GetFirstImageRedyEntityNode();
    while (node)
        all.push_back(doc.GetNextImageRedyEntity(&node));
    return all;
}

// A one-picture file around the given "data" value.
std::wstring PictureFile(const std::wstring& data, int oid = 30) {
    return L"[image_Redy]\r\n\toid = " + std::to_wstring(oid) +
           L"\r\n\tnom = \"photo\"\r\n\texperience = 2\r\n\tposition = 3\r\n\tencoding = 4\r\n"
           L"\tdata = \"" +
           data + L"\"\r\n\r\n";
}

std::wstring Base64(const std::string& bytes) {
    std::vector<unsigned char> out(
        VyrEncodeBase64::GetSizeEncode64(76, static_cast<int>(bytes.size())));
    int length = 0;
    VyrEncodeBase64::EncodeBinaryToBase64(
        reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data())), out.data(), 76,
        static_cast<int>(bytes.size()), &length);
    return std::wstring(out.begin(), out.begin() + length);
}

// The "data" value of the nth picture section of a saved text.
std::wstring DataValue(const std::wstring& text, size_t nth) {
    const std::wstring section = Section(text, L"[image_Redy]", nth);
    const size_t start = section.find(L"\tdata = \"");
    if (start == std::wstring::npos)
        return std::wstring();
    const size_t from = start + 9;
    return section.substr(from, section.find(L'"', from) - from);
}

}  // namespace

class VyrImageSection : public ::testing::Test {
protected:
    // Two pictures read from a file, as the application's documents get them.
    void LoadTwoPictures(VyrBaseData& doc) {
        const std::wstring a = PictureFile(Base64(VyrEncodeJpeg(Picture(40, 30, 10))), 30);
        std::wstring b = PictureFile(Base64(VyrEncodeJpeg(Picture(17, 23, 200))), 31);
        b.replace(b.find(L"photo"), 5, L"sch\u00e9ma");
        ASSERT_TRUE(LoadText(doc, dir, a + b, "two.vyr"));
        ASSERT_EQ(Pictures(doc).size(), 2u);
    }
    filetest::TempDir dir;
};

TEST_F(VyrImageSection, PictureIsWrittenWithItsFieldsAndBase64LinesOf76) {
    VyrBaseData doc(nullptr);
    LoadTwoPictures(doc);
    VyrImageRedyEntity* first = Pictures(doc)[0];
    const std::wstring text = SaveText(doc, dir);
    const std::wstring section = Section(text, L"[image_Redy]", 0);
    const std::wstring head =
        L"[image_Redy]\r\n\toid = 30\r\n\tnom = \"photo\"\r\n\texperience = 2\r\n"
        L"\tposition = 3\r\n\tencoding = 4\r\n\tdata = \"";
    EXPECT_EQ(section.substr(0, head.size()), head);
    const std::wstring data = DataValue(text, 0);
    ASSERT_GT(data.size(), 152u);
    EXPECT_EQ(data.find(L"\r\n"), 76u);
    EXPECT_EQ(data.find(L"\r\n", 78), 154u);
    EXPECT_EQ(section.substr(section.size() - 5), L"\"\r\n\r\n");
    EXPECT_TRUE(first->GetImage().IsOk());
}

TEST_F(VyrImageSection, TwoPicturesRoundTripWithEveryField) {
    VyrBaseData doc(nullptr);
    LoadTwoPictures(doc);
    VyrBaseData back(nullptr);
    ASSERT_TRUE(LoadText(back, dir, SaveText(doc, dir)));
    const auto before = Pictures(doc);
    const auto after = Pictures(back);
    ASSERT_EQ(after.size(), 2u);
    for (size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(after[i]->GetOid(), before[i]->GetOid());
        EXPECT_EQ(after[i]->GetEntityName(), before[i]->GetEntityName());
        EXPECT_EQ(after[i]->GetExperienceOid(), 2);
        EXPECT_EQ(after[i]->GetPosition(), 3);
        EXPECT_EQ(after[i]->GetEncoding(), 4);
        ASSERT_TRUE(after[i]->GetImage().IsOk());
        EXPECT_EQ(after[i]->GetImage().GetWidth(), before[i]->GetImage().GetWidth());
        EXPECT_EQ(after[i]->GetImage().GetHeight(), before[i]->GetImage().GetHeight());
        // JPEG is lossy; a second generation stays close to the first.
        EXPECT_NEAR(after[i]->GetImage().GetBlue(5, 5), before[i]->GetImage().GetBlue(5, 5), 12);
    }
    EXPECT_EQ(after[1]->GetEntityName(), wxString(L"sch\u00e9ma"));
}

TEST_F(VyrImageSection, PictureWrittenByTheLibraryDecodesWithDjpeg) {
    if (!HaveTool("djpeg") || !HaveTool("base64"))
        GTEST_SKIP() << "djpeg or base64 not installed";
    VyrBaseData doc(nullptr);
    LoadTwoPictures(doc);
    const std::wstring data = DataValue(SaveText(doc, dir), 1);
    const std::string b64Path = dir.File("picture.b64");
    const std::string jpegPath = dir.File("picture.jpg");
    const std::string ppmPath = dir.File("picture.ppm");
    filetest::WriteBytes(b64Path, std::string(data.begin(), data.end()));
    // The tool decodes the base64 text (its CR LF breaks taken out) and the JPEG inside.
    const std::string command = "tr -d '\\r\\n' < '" + b64Path + "' | base64 -d > '" + jpegPath +
                                "' && djpeg -pnm '" + jpegPath + "' > '" + ppmPath + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(filetest::ReadBytes(ppmPath).substr(0, 9), "P6\n17 23\n");
}

TEST_F(VyrImageSection, JpegMadeByCjpegRoundTripsThroughADocument) {
    if (!HaveTool("cjpeg") || !HaveTool("base64"))
        GTEST_SKIP() << "cjpeg or base64 not installed";
    const std::string ppmPath = dir.File("in.ppm");
    const std::string b64Path = dir.File("in.b64");
    std::string ppm = "P6\n31 19\n255\n";
    for (int i = 0; i < 31 * 19; ++i)
        ppm += std::string{char(i % 31 * 8), char(i / 31 * 13), char(77)};
    filetest::WriteBytes(ppmPath, ppm);
    const std::string command =
        "cjpeg -progressive '" + ppmPath + "' | base64 -w 76 > '" + b64Path + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const std::string b64 = filetest::ReadBytes(b64Path);
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir, PictureFile(std::wstring(b64.begin(), b64.end()))));
    ASSERT_EQ(Pictures(doc).size(), 1u);
    const wxImage& image = Pictures(doc)[0]->GetImage();
    ASSERT_TRUE(image.IsOk());
    EXPECT_EQ(image.GetWidth(), 31);
    EXPECT_EQ(image.GetHeight(), 19);
    EXPECT_NEAR(image.GetBlue(10, 10), 77, 8);
    VyrBaseData back(nullptr);
    ASSERT_TRUE(LoadText(back, dir, SaveText(doc, dir), "back.vyr"));
    ASSERT_EQ(Pictures(back).size(), 1u);
    EXPECT_EQ(Pictures(back)[0]->GetImage().GetWidth(), 31);
}

TEST_F(VyrImageSection, BadDataLeavesTheRecordWithoutAPicture) {
    std::string jpeg = VyrEncodeJpeg(Picture(16, 16, 0));
    std::string huge = jpeg;
    for (size_t i = 2; i + 9 < huge.size(); ++i)
        if (huge[i] == '\xFF' && huge[i + 1] == '\xC0') {
            huge.replace(i + 5, 4, "\x27\x10\x27\x10");  // 10000 x 10000
            break;
        }
    const std::wstring cases[] = {
        L"",
        L"@@@@ not base64 ####",
        Base64("plain text, not a picture"),
        Base64(jpeg.substr(0, jpeg.size() - 10)),  // truncated JPEG
        Base64(huge),                              // more than 64 megapixels declared
        Base64(jpeg).substr(0, 40),                // cut base64
    };
    for (const std::wstring& data : cases) {
        VyrBaseData doc(nullptr);
        ASSERT_TRUE(LoadText(doc, dir, PictureFile(data) + L"[manipulation]\r\n\toid = 50\r\n"));
        ASSERT_EQ(Pictures(doc).size(), 1u);
        EXPECT_FALSE(Pictures(doc)[0]->GetImage().IsOk());
        EXPECT_EQ(Pictures(doc)[0]->GetEncoding(), 4);
        // The sections after it are read.
        EXPECT_NE(doc.FindExperienceByOid(50), nullptr);
    }
}

TEST_F(VyrImageSection, PictureWithoutImageIsWrittenWithEmptyData) {
    VyrBaseData doc(nullptr);
    ASSERT_TRUE(LoadText(doc, dir, PictureFile(L"")));
    const std::wstring text = SaveText(doc, dir);
    EXPECT_NE(Section(text, L"[image_Redy]").find(L"\tdata = \"\"\r\n\r\n"), std::wstring::npos);
}

namespace {

// Reaches the reader of the older picture record, which no section header leads to.
class OldPictureReader : public VyrBaseData {
public:
    OldPictureReader() : VyrBaseData(nullptr) {}
    using VyrBaseData::ParseImage;
};

}  // namespace

TEST_F(VyrImageSection, OlderPictureRecordIsReadByItsOwnReaderOnly) {
    const std::wstring section =
        L"\toid = 21\r\n\tcurve = \"U(t)\"\r\n\tindex = 4\r\n\tposx = 1,5\r\n\tposy = -2\r\n"
        L"\tvisible = 0\r\n\tposition = 6\r\n\tdata = \"" +
        Base64(VyrEncodeJpeg(Picture(9, 7, 0))) + L"\"\r\n[suite]\r\n";
    OldPictureReader doc;
    VyrBaseDataTestAccess access(doc);
    access.SetText(section);
    EXPECT_EQ(doc.ParseImage(), "[suite]");
    VyrEntity* e = doc.FindEntity(21);
    ASSERT_NE(e, nullptr);
    ASSERT_EQ(e->GetKind(), VYR_KIND_IMAGE);
    VyrImageEntity* old = static_cast<VyrImageEntity*>(e);
    EXPECT_EQ(old->GetCurve(), "U(t)");
    EXPECT_EQ(old->GetPointIndex(), 4);
    EXPECT_EQ(old->GetPosX(), 1.5);
    EXPECT_EQ(old->GetPosY(), -2.0);
    EXPECT_FALSE(old->IsVisible());
    EXPECT_EQ(old->GetPosition(), 6);
    ASSERT_TRUE(old->GetImage().IsOk());
    EXPECT_EQ(old->GetImage().GetWidth(), 9);
    access.ClearText();

    // No header leads to it: in a file such a section is unknown, kept and written back.
    VyrBaseData file(nullptr);
    ASSERT_TRUE(LoadText(file, dir, L"[image]\r\n\toid = 21\r\n"));
    EXPECT_EQ(file.FindEntity(21), nullptr);
    EXPECT_EQ(file.GetUnknownSections().GetCount(), 1u);
}

TEST_F(VyrImageSection, OlderPictureRecordSkipsLinesBeforeItsOidAndUnknownKeys) {
    OldPictureReader doc;
    VyrBaseDataTestAccess access(doc);
    // The tokenizer reads the text in place: it must outlive the reading.
    const std::wstring section =
        L"\tindex = 4\r\n\tcurve = \"early\r\n\toid = 99\"\r\n\tautre = 1\r\n"
        L"\toid = 21\r\n\tautre = 2\r\n\tposition = 6\r\n[suite]\r\n";
    access.SetText(section);
    EXPECT_EQ(doc.ParseImage(), "[suite]");
    EXPECT_EQ(doc.FindEntity(99), nullptr);
    VyrEntity* e = doc.FindEntity(21);
    ASSERT_NE(e, nullptr);
    VyrImageEntity* old = static_cast<VyrImageEntity*>(e);
    EXPECT_TRUE(old->GetCurve().empty());
    EXPECT_NE(old->GetPointIndex(), 4);
    EXPECT_EQ(old->GetPosition(), 6);
}
