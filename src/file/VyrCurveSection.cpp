// The curve section "[courbe]": the curve's name and comment, its two vectors by oid, colour,
// style, diagram membership, stored ranges and the oids of its notes.
#include "file/VyrNumberText.h"
#include "file/VyrExperienceOwners.h"
#include "file/VyrReadText.h"
#include "file/VyrTextWriter.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrUnit.h"
#include "vyrbase/data/VyrVecteur.h"

namespace {

enum CurveKey {
    kCurveOid,
    kCurveNom,
    kCurveCommentaire,
    kCurveExpression,
    kCurveVx,
    kCurveAbscisse,
    kCurveVy,
    kCurveOrdonnee,
    kCurveCouleur,
    kCurveStyleEx,
    kCurveXmin,
    kCurveXmax,
    kCurveYmin,
    kCurveYmax,
    kCurveAnnotations,
    kCurveDiagramme,
    kCurveLesDiagrammes,
};
// "abscisse" and "ordonnée" are read though never written.
const wchar_t* const kCurveKeys[] = {
    L"oid",           L"nom",       L"commentaire",   L"expression", L"vx",   L"abscisse", L"vy",
    L"ordonn\u00e9e", L"couleur",   L"style_ex",      L"xmin",       L"xmax", L"ymin",     L"ymax",
    L"annotations",   L"diagramme", L"lesdiagrammes",
};

// The fixed palette of "couleur" values above 0xFFFFFF.
const unsigned char kPalette[20][3] = {
    {0, 0, 0},       {128, 0, 0},     {0, 128, 0},     {153, 204, 0}, {0, 0, 128},
    {128, 0, 128},   {0, 128, 128},   {153, 204, 255}, {255, 153, 0}, {128, 128, 0},
    {204, 153, 255}, {128, 128, 128}, {192, 192, 192}, {255, 0, 0},   {0, 255, 0},
    {255, 255, 0},   {0, 0, 255},     {255, 0, 255},   {0, 255, 255}, {255, 255, 255},
};

// Unit records carry one range, stored for every scale type; the standard one is read back.
const int kStandardScale = 1;

int PackColour(const wxColour& colour) {
    return colour.Red() + colour.Green() * 256 + colour.Blue() * 65536;
}

}  // namespace

// A "couleur" value: R + 256 G + 65536 B up to 0xFFFFFF (and any negative value), a palette
// index above.
wxColour VyrBaseData::ColourFromFile(int value) {
    if (value > 0xFFFFFF) {
        const unsigned char* rgb = kPalette[(value - 16777216) % 20];
        return wxColour(rgb[0], rgb[1], rgb[2]);
    }
    const unsigned u = static_cast<unsigned>(value);
    return wxColour(u & 255, (u >> 8) & 255, (u >> 16) & 255, 255);
}

bool VyrBaseData::SauveCourbe(VyrTextWriter& out) {
    const wxString empty;
    const VyrExperienceOwners owners(*this);
    wxVyrListEntityNode* node = GetFirstCourbeNode();
    while (node) {
        VyrCourbe* curve = GetNextCourbe(&node);
        out.Header(L"courbe")
            .LineInt(L"oid", curve->GetOid())
            .LineString(L"nom", curve->GetEntityName())
            .LineString(L"symbole", empty)
            .LineEscaped(L"commentaire", curve->GetText())
            .LineString(L"expression", empty)
            .LineRaw(L"calcul\u00e9", L"f")
            .LineRaw(L"priv\u00e9e", L"f")
            .LineInt(L"attributs", 0);
        VyrExperience* experience = owners.OfCourbe(curve);
        // Kept, as for vectors: a curve without experiment ends the writer here.
        if (!experience)
            return out.IsOk();
        const bool first = curve->IsShownInDiagram(0);
        const bool second = curve->IsShownInDiagram(1);
        const VyrScale& scale = curve->GetScale();
        out.LineInt(L"experience", experience->GetOid())
            .LineInt(L"vx", curve->GetVx() ? curve->GetVx()->GetOid() : 0)
            .LineInt(L"vy", curve->GetVy() ? curve->GetVy()->GetOid() : 0)
            .LineInt(L"couleur", PackColour(curve->GetColor()))
            .LineRaw(L"style", GetStringStyle(curve).wc_str())
            .LineString(L"style_ex", GetStringStyleEx(curve))
            .LineInt(L"diagramme", second && !first ? 1 : 0)
            .TableOpen(L"lesdiagrammes", 2)
            .Int(first ? 1 : 0)
            .Text(L"\t")
            .Int(second ? 1 : 0)
            .Text(L"\t")
            .TableClose()
            .LineG(L"xmin", scale.GetXmin())
            .LineG(L"xmax", scale.GetXmax())
            .LineG(L"ymin", scale.GetYmin())
            .LineG(L"ymax", scale.GetYmax());
        const int noteCount = curve->GetNotesCount();
        if (noteCount > 0) {
            out.Text(L"\tannotations = table ").Int(noteCount).Text(L" {");
            int index = 0;
            for (wxVyrListNoteNode* n = curve->GetFirstNote(); n; n = n->GetNext(), ++index) {
                if (index % 4 == 0)
                    out.Text(L"\r\n");
                out.Text(L"\t").Int(n->GetData()->GetOid());
            }
            out.TableClose();
        }
        out.EndLine();
    }
    return out.IsOk();
}

// The vector of a "vx"/"vy" oid (null when it names no vector); its unit's range, when the
// unit is known and its range valid, becomes the curve's range on that axis until the curve's
// own "xmin".."ymax" lines are read.
VyrVecteur* VyrBaseData::FindCurveVector(int oid, VyrCourbe* curve, bool x) {
    VyrEntity* entity = FindEntity(oid);
    if (!entity || entity->GetKind() != VYR_KIND_VECTEUR)
        return nullptr;
    VyrVecteur* vector = static_cast<VyrVecteur*>(entity);
    const VyrUnit* unit = FindUnit(FindUnitOid(vector));
    if (curve && unit && unit->GetMax(kStandardScale) > unit->GetMin(kStandardScale)) {
        VyrScale& scale = curve->GetScale();
        if (x) {
            scale.SetXmin(unit->GetMin(kStandardScale));
            scale.SetXmax(unit->GetMax(kStandardScale));
        } else {
            scale.SetYmin(unit->GetMin(kStandardScale));
            scale.SetYmax(unit->GetMax(kStandardScale));
        }
    }
    return vector;
}

// Raises the document's diagram count to `count` when it holds fewer diagrams.
void VyrBaseData::RaiseDiagramCount(int count) {
    if (count > m_iDiagramCount)
        SetDiagramCount(count);
}

void VyrBaseData::ApplyStyleEx(VyrCourbe* curve, const wxString& style) {
    // Fixed positions, each field taken one character wide: point style (hexadecimal) at 2,
    // line style (hexadecimal) at 4, width (decimal, kept although written in hexadecimal) at
    // 6, halved toward zero plus 1.
    const std::wstring_view text(style.wc_str(), style.length());
    if (text.size() > 2)
        curve->SetStylePoint(VyrNumberText::ReadHex(text.substr(2)));
    if (text.size() > 4)
        curve->SetStyleLiaison(VyrNumberText::ReadHex(text.substr(4)));
    if (text.size() > 6)
        curve->SetWidth(VyrNumberText::ReadDecimal(text.substr(6)) / 2 + 1);
}

wxString VyrBaseData::ParseCurve(bool* stop) {
    VyrCourbe* curve = nullptr;
    bool diagramRead = false;
    // A curve whose section says nothing of diagrams is shown in the first one.
    auto finish = [&]() {
        if (curve && !diagramRead)
            curve->SetShownInDiagram(0, true);
    };
    wxString header;
    std::wstring_view line;
    while (NextSectionLine(line, header)) {
        switch (const int key = VyrReadText::MatchKey(line, kCurveKeys); key) {
            case kCurveOid:
                finish();
                diagramRead = false;
                curve = static_cast<VyrCourbe*>(
                    CreateEntity(VYR_KIND_COURBE, VyrReadText::IntValue(line), nullptr));
                break;
            case kCurveNom:
            case kCurveCommentaire:
            case kCurveExpression: {
                wxString value;
                const bool closed = ReadQuoted(line, value);
                if (!closed && key != kCurveNom && stop)
                    *stop = true;
                if (curve && key == kCurveNom)
                    curve->SetEntityName(value.wc_str());
                else if (curve && key == kCurveCommentaire)
                    curve->SetText(value);
                break;
            }
            case kCurveVx:
            case kCurveVy: {
                VyrVecteur* vector =
                    FindCurveVector(VyrReadText::IntValue(line), curve, key == kCurveVx);
                if (curve && key == kCurveVx)
                    curve->SetVx(vector);
                else if (curve)
                    curve->SetVy(vector);
                break;
            }
            case kCurveAbscisse:
            case kCurveOrdonnee: {
                wxString name;
                ReadQuoted(line, name);
                VyrVecteur* vector =
                    curve ? (key == kCurveAbscisse ? curve->GetVx() : curve->GetVy()) : nullptr;
                if (vector && vector->GetGrandeur().empty())
                    vector->SetGrandeur(name);
                break;
            }
            case kCurveCouleur:
                if (curve)
                    curve->SetColor(ColourFromFile(VyrReadText::IntValue(line)));
                break;
            case kCurveStyleEx: {
                wxString style;
                ReadQuoted(line, style);
                if (curve)
                    ApplyStyleEx(curve, style);
                break;
            }
            case kCurveXmin:
            case kCurveXmax:
            case kCurveYmin:
            case kCurveYmax: {
                const double value = VyrReadText::DoubleValue(line);
                if (!curve)
                    break;
                VyrScale& scale = curve->GetScale();
                if (key == kCurveXmin)
                    scale.SetXmin(value);
                else if (key == kCurveXmax)
                    scale.SetXmax(value);
                else if (key == kCurveYmin)
                    scale.SetYmin(value);
                else
                    scale.SetYmax(value);
                break;
            }
            case kCurveAnnotations: {
                std::vector<int> oids;
                if (!ReadTableInt(line, oids) && stop)
                    *stop = true;
                // "[Annotation]" sections come first in the file: the notes exist already. An
                // oid that names no note is skipped.
                for (int oid : oids) {
                    VyrEntity* entity = curve ? FindEntity(oid) : nullptr;
                    if (entity && entity->GetKind() == VYR_KIND_NOTE)
                        curve->AddNote(static_cast<VyrNote*>(entity));
                }
                break;
            }
            case kCurveDiagramme: {
                const int diagram = VyrReadText::IntValue(line);
                if (!curve)
                    break;
                diagramRead = true;
                curve->SetShownInDiagram(0, diagram == 0);
                curve->SetShownInDiagram(1, diagram == 1);
                if (diagram >= 0 && diagram < 2)
                    RaiseDiagramCount(diagram + 1);
                break;
            }
            case kCurveLesDiagrammes: {
                std::vector<int> flags;
                if (!ReadTableInt(line, flags) && stop)
                    *stop = true;
                if (!curve)
                    break;
                diagramRead = true;
                // The count rises to the highest diagram the curve is shown in.
                int highest = -1;
                for (size_t i = 0; i < flags.size() && i < 2; ++i) {
                    curve->SetShownInDiagram(static_cast<int>(i), flags[i] != 0);
                    if (flags[i] != 0)
                        highest = static_cast<int>(i);
                }
                RaiseDiagramCount(highest + 1);
                break;
            }
            default:
                break;
        }
    }
    finish();
    return header;
}
