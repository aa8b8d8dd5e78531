// The unit section "[unité]": one per vector, under a fresh oid taken on every save; on
// reading, unit records that connect vectors to their unit text while the load runs.
#include <memory>

#include "file/VyrReadText.h"
#include "file/VyrTextWriter.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

const wchar_t kUnitHeader[] = L"unit\u00e9";

enum UnitKey { kUnitOid, kUnitSymbole, kUnitEchMin, kUnitEchMax };
const wchar_t* const kUnitKeys[] = {L"oid", L"symbole", L"ech_min", L"ech_max"};

}  // namespace

bool VyrBaseData::SauveUnite(VyrTextWriter& out) {
    const wxString empty;
    wxVyrListEntityNode* node = GetFirstEntityNode(VYR_KIND_VECTEUR);
    while (node) {
        VyrVecteur* vector = static_cast<VyrVecteur*>(GetNextEntity(&node, VYR_KIND_VECTEUR));
        // Unit oids are not kept: each save takes a fresh one per vector from the counter.
        const int unitOid = GetNewOid();
        m_mapVectorUnit[vector->GetOid()] = unitOid;
        out.Header(kUnitHeader)
            .LineInt(L"oid", unitOid)
            .LineEscaped(L"symbole", vector->GetUnite())
            .LineString(L"grandeur", empty)
            .LineString(L"variable", empty)
            .LineFixed8(L"ech_min", 0.0)
            .LineFixed8(L"ech_max", 0.0)
            .EndLine();
    }
    return out.IsOk();
}

wxString VyrBaseData::ParseUnit() {
    VyrUnit* unit = nullptr;
    wxString header;
    std::wstring_view line;
    while (NextSectionLine(line, header)) {
        switch (const int key = VyrReadText::MatchKey(line, kUnitKeys); key) {
            case kUnitOid: {
                const int oid = VyrReadText::IntValue(line);
                // A later section with the same oid replaces the record. Nothing changes
                // until both the record and its entry exist (either may run out of memory).
                std::unique_ptr<VyrUnit> fresh(new VyrUnit);
                VyrUnit*& slot = m_mapUnits[oid];
                delete slot;
                slot = fresh.release();
                unit = slot;
                break;
            }
            case kUnitSymbole: {
                wxString symbol;
                ReadQuoted(line, symbol);
                const int at = symbol.Find(L'@');
                if (at != wxNOT_FOUND)
                    symbol.Truncate(static_cast<size_t>(at));
                if (unit)
                    unit->SetName(symbol);
                break;
            }
            case kUnitEchMin:
            case kUnitEchMax: {
                // The file carries one range per unit: it stands for every scale type.
                const double bound = VyrReadText::DoubleValue(line);
                for (int type = 0; unit && type < VyrUnit::TYPE_COUNT; ++type) {
                    if (key == kUnitEchMin)
                        unit->SetMin(type, bound);
                    else
                        unit->SetMax(type, bound);
                }
                break;
            }
            default:
                break;
        }
    }
    return header;
}
