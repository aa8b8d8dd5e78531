// The picture section "[image_Redy]": a picture of the document as JPEG in base64 text; and
// the reader of the older picture record, which no section header leads to.
#include "file/VyrJpegData.h"
#include "file/VyrReadText.h"
#include "file/VyrTextWriter.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrImageEntity.h"
#include "vyrbase/data/VyrImageRedyEntity.h"

namespace {

enum PictureKey {
    kPictureOid,
    kPictureNom,
    kPictureExperience,
    kPicturePosition,
    kPictureEncoding,
    kPictureData
};
const wchar_t* const kPictureKeys[] = {L"oid",      L"nom",      L"experience",
                                       L"position", L"encoding", L"data"};

enum OldPictureKey {
    kOldOid,
    kOldCurve,
    kOldIndex,
    kOldPosX,
    kOldPosY,
    kOldVisible,
    kOldPosition,
    kOldData
};
const wchar_t* const kOldPictureKeys[] = {L"oid",  L"curve",   L"index",    L"posx",
                                          L"posy", L"visible", L"position", L"data"};

}  // namespace

bool VyrBaseData::SauveImageRedy(VyrTextWriter& out) {
    wxVyrListEntityNode* node = GetFirstImageRedyEntityNode();
    while (node) {
        VyrImageRedyEntity* picture = GetNextImageRedyEntity(&node);
        // A picture that cannot be encoded leaves an empty "data" value.
        out.Header(L"image_Redy")
            .LineInt(L"oid", picture->GetOid())
            .LineString(L"nom", picture->GetEntityName())
            .LineInt(L"experience", picture->GetExperienceOid())
            .LineInt(L"position", picture->GetPosition())
            .LineInt(L"encoding", picture->GetEncoding())
            .Text(L"\tdata = \"")
            .Text(VyrImageToBase64(picture->GetImage()))
            .Text(L"\"\r\n")
            .EndLine();
    }
    return out.IsOk();
}

wxString VyrBaseData::ParseImageRedy() {
    VyrImageRedyEntity* picture = nullptr;
    wxString header;
    std::wstring_view line;
    while (NextSectionLine(line, header)) {
        const int key = VyrReadText::MatchKey(line, kPictureKeys);
        if (key == kPictureOid) {
            picture = static_cast<VyrImageRedyEntity*>(
                CreateEntity(VYR_KIND_IMAGE_REDY, VyrReadText::IntValue(line), nullptr));
            continue;
        }
        if (key < 0)
            continue;
        wxString text;
        if (key == kPictureNom || key == kPictureData)
            ReadQuoted(line, text);
        if (!picture)
            continue;
        switch (key) {
            case kPictureNom:
                picture->SetEntityName(text.wc_str());
                break;
            case kPictureExperience:
                picture->SetExperienceOid(VyrReadText::IntValue(line));
                break;
            case kPicturePosition:
                picture->SetPosition(VyrReadText::IntValue(line));
                break;
            case kPictureEncoding:
                picture->SetEncoding(VyrReadText::IntValue(line));
                break;
            case kPictureData: {
                // Only a picture that decodes replaces the record's; a bad one leaves the
                // record without a picture and the load goes on.
                const wxImage image = VyrImageFromBase64(text);
                if (image.IsOk())
                    picture->SetImage(image);
                break;
            }
            default:
                break;
        }
    }
    return header;
}

wxString VyrBaseData::ParseImage() {
    VyrImageEntity* picture = nullptr;
    wxString header;
    std::wstring_view line;
    while (NextSectionLine(line, header)) {
        const int key = VyrReadText::MatchKey(line, kOldPictureKeys);
        if (key == kOldOid) {
            picture = static_cast<VyrImageEntity*>(
                CreateEntity(VYR_KIND_IMAGE, VyrReadText::IntValue(line), nullptr));
            continue;
        }
        if (key < 0)
            continue;
        wxString text;
        if (key == kOldCurve || key == kOldData)
            ReadQuoted(line, text);
        if (!picture)
            continue;
        switch (key) {
            case kOldCurve:
                picture->SetCurve(text);
                break;
            case kOldIndex:
                picture->SetPointIndex(VyrReadText::IntValue(line));
                break;
            case kOldPosX:
                picture->SetPos(VyrReadText::DoubleValue(line), picture->GetPosY());
                break;
            case kOldPosY:
                picture->SetPos(picture->GetPosX(), VyrReadText::DoubleValue(line));
                break;
            case kOldVisible:
                picture->SetVisible(VyrReadText::IntValue(line) != 0);
                break;
            case kOldPosition:
                picture->SetPosition(VyrReadText::IntValue(line));
                break;
            case kOldData: {
                const wxImage image = VyrImageFromBase64(text);
                if (image.IsOk())
                    picture->SetImage(image);
                break;
            }
            default:
                break;
        }
    }
    return header;
}
