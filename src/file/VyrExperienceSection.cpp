// The experiment section "[manipulation]": name, description and the oids of its curves,
// which the curve sections before it have created.

#include "file/VyrReadText.h"
#include "file/VyrTextWriter.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/core/VyrResourceText.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"

namespace {

enum ExperienceKey { kExperienceOid, kExperienceNom, kExperienceCourbes };
// "description" is written but never read.
const wchar_t* const kExperienceKeys[] = {L"oid", L"nom", L"courbes"};

}  // namespace

bool VyrBaseData::SauveExperience(VyrTextWriter& out) {
    wxVyrListEntityNode* node = GetFirstExperienceNode();
    while (node) {
        VyrExperience* experience = GetNextExperience(&node);
        out.Header(L"manipulation")
            .LineInt(L"oid", experience->GetOid())
            .LineString(L"nom", experience->GetEntityName())
            .LineString(L"description", experience->GetCommentaire())
            .TableOpen(L"courbes", experience->GetNbCourbe());
        for (wxVyrListCourbeNode* c = experience->GetFirstCourbeNode(); c; c = c->GetNext())
            out.Int(c->GetData()->GetOid()).Text(L"\t");
        out.TableClose().EndLine();
    }
    return out.IsOk();
}

wxString VyrBaseData::ParseExperience(bool* stop) {
    VyrExperience* experience = nullptr;
    // An experiment left without a name takes the default one.
    auto finish = [&]() {
        if (experience && experience->GetEntityName().empty())
            experience->SetEntityName(VyrResourceText::Get(L"IDS_EXPERIENCE1").wc_str());
    };
    wxString header;
    std::wstring_view line;
    while (NextSectionLine(line, header)) {
        switch (VyrReadText::MatchKey(line, kExperienceKeys)) {
            case kExperienceOid:
                finish();
                experience = static_cast<VyrExperience*>(
                    CreateEntity(VYR_KIND_EXPERIENCE, VyrReadText::IntValue(line), nullptr));
                break;
            case kExperienceNom: {
                wxString name;
                ReadQuoted(line, name);
                if (experience)
                    experience->SetEntityName(name.wc_str());
                break;
            }
            case kExperienceCourbes: {
                std::vector<int> oids;
                if (!ReadTableInt(line, oids) && stop)
                    *stop = true;
                for (int oid : oids) {
                    VyrEntity* entity = FindEntity(oid);
                    // An oid that names nothing ends the load (what was read is kept).
                    if (!entity) {
                        if (stop)
                            *stop = true;
                    } else if (experience && entity->GetKind() == VYR_KIND_COURBE) {
                        experience->AddCourbe(static_cast<VyrCourbe*>(entity));
                    }
                }
                break;
            }
            default:
                break;
        }
    }
    finish();
    return header;
}
