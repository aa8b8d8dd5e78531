// The vector section "[vecteur]": quantity name, unit (through the unit sections written just
// before), the values four to a line and the validity mask as a table of bytes.
#include <algorithm>
#include <climits>
#include <cstring>

#include "file/VyrExperienceOwners.h"
#include "file/VyrReadText.h"
#include "file/VyrTextWriter.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

enum VectorKey { kVectorOid, kVectorNom, kVectorUnite, kVectorPoints, kVectorValidite };
const wchar_t* const kVectorKeys[] = {L"oid", L"nom", L"unit\u00e9", L"points", L"validit\u00e9"};

// The validity bytes written for a vector of `size` points: one more than needed when the
// size is a multiple of 8 (kept).
int ValidityByteCount(int size) {
    return size > 0 ? size / 8 + 1 : 0;
}

}  // namespace

bool VyrBaseData::SauveVecteur(VyrTextWriter& out) {
    const wxString empty;
    const VyrExperienceOwners owners(*this);
    wxVyrListEntityNode* node = GetFirstEntityNode(VYR_KIND_VECTEUR);
    while (node) {
        VyrVecteur* vector = static_cast<VyrVecteur*>(GetNextEntity(&node, VYR_KIND_VECTEUR));
        out.Header(L"vecteur")
            .LineInt(L"oid", vector->GetOid())
            .LineEscaped(L"nom", vector->GetGrandeur())
            .LineString(L"symbole", empty)
            .LineString(L"commentaire", empty)
            .LineString(L"expression", empty)
            .LineRaw(L"calcul\u00e9", L"f")
            .LineRaw(L"priv\u00e9e", L"f")
            .LineInt(L"attributs", 257);
        VyrExperience* experience = owners.OfVecteur(vector);
        // Kept: a vector that no experiment holds ends the writer here, its section left
        // without the lines below and no later vector written, and the save goes on.
        if (!experience)
            return out.IsOk();
        out.LineInt(L"experience", experience->GetOid())
            .LineInt(L"unit\u00e9", FindUnitOid(vector));

        const int size = vector->GetSize();
        const double* values = static_cast<const VyrVecteur*>(vector)->GetArea();
        out.TableOpen(L"points", size)
            .TableElements(size, [values](VyrTextWriter& w, int i) { w.G(values[i]); })
            .TableClose();

        const VyrBitMask* mask = vector->GetValidity();
        const int bytes = ValidityByteCount(size);
        out.TableOpen(L"validit\u00e9", bytes)
            .TableElements(bytes, [mask](VyrTextWriter& w, int i) { w.Int(mask->GetOctetAt(i)); })
            .TableClose()
            .EndLine();
    }
    return out.IsOk();
}

wxString VyrBaseData::ParseVector(bool* stop) {
    VyrVecteur* vector = nullptr;
    wxString header;
    std::wstring_view line;
    while (NextSectionLine(line, header)) {
        switch (VyrReadText::MatchKey(line, kVectorKeys)) {
            case kVectorOid:
                vector = static_cast<VyrVecteur*>(
                    CreateEntity(VYR_KIND_VECTEUR, VyrReadText::IntValue(line), nullptr));
                break;
            case kVectorNom: {
                wxString name;
                ReadQuoted(line, name);
                if (vector)
                    vector->SetGrandeur(name);
                break;
            }
            case kVectorUnite: {
                const int unitOid = VyrReadText::IntValue(line);
                if (!vector)
                    break;
                if (VyrUnit* unit = FindUnit(unitOid))
                    vector->SetUnite(unit->GetName());
                m_mapVectorUnit[vector->GetOid()] = unitOid;
                break;
            }
            case kVectorPoints:
                // The values read are kept even when the table was not closed.
                if (!ReadTableDoubleInto(line, vector) && stop)
                    *stop = true;
                break;
            case kVectorValidite: {
                std::vector<int> bytes;
                if (!ReadTableInt(line, bytes) && stop)
                    *stop = true;
                if (vector && !bytes.empty())
                    vector->GetValidity()->SetBits(static_cast<int>(bytes.size()), bytes.data());
                break;
            }
            default:
                break;
        }
    }
    return header;
}
