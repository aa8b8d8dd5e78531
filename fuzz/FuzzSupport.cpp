// Shared pieces of the fuzz targets.
#include "FuzzSupport.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <utility>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

#include <wx/image.h>
#include <wx/init.h>

#include "vyrbase/VyrBase.h"

namespace vyrfuzz {

void StartToolkit() {
    static wxInitializer* toolkit = nullptr;
    if (toolkit)
        return;
    setenv("DISPLAY", "", 1);
    setenv("WAYLAND_DISPLAY", "", 1);
    // Kept for the life of the process, as the toolkit expects.
    toolkit = new wxInitializer;
    Check(toolkit->IsOk(), "the toolkit starts");
}

MemoryFile::MemoryFile() {
    m_iDescriptor = memfd_create("vyrfuzz", MFD_CLOEXEC);
    if (m_iDescriptor >= 0)
        m_sPath = wxString::Format("/proc/self/fd/%d", m_iDescriptor);
}

MemoryFile::~MemoryFile() {
    if (m_iDescriptor >= 0)
        close(m_iDescriptor);
}

std::string MemoryFile::Read() const {
    std::string bytes;
    char block[65536];
    off_t offset = 0;
    for (;;) {
        const ssize_t n = pread(m_iDescriptor, block, sizeof block, offset);
        if (n <= 0)
            break;
        bytes.append(block, static_cast<size_t>(n));
        offset += n;
    }
    return bytes;
}

std::string SaveToMemory(VyrBaseData& doc, bool* ok) {
    MemoryFile file;
    Check(file.IsOk(), "a memory file can be made");
    *ok = doc.Save(file.GetPath());
    return *ok ? file.Read() : std::string();
}

namespace {

class Text {
public:
    Text& operator<<(const char* s) {
        m_s += s;
        return *this;
    }
    Text& operator<<(const wxString& s) {
        m_s += '"';
        m_s += s.utf8_string();
        m_s += '"';
        return *this;
    }
    Text& operator<<(long long v) {
        m_s += std::to_string(v);
        return *this;
    }
    Text& operator<<(int v) { return *this << static_cast<long long>(v); }
    Text& operator<<(unsigned v) { return *this << static_cast<long long>(v); }
    Text& operator<<(bool v) { return *this << (v ? "true" : "false"); }
    // Bit for bit, except that every NaN is one NaN.
    Text& operator<<(double v) {
        if (std::isnan(v))
            return *this << "nan";
        uint64_t bits = 0;
        std::memcpy(&bits, &v, sizeof bits);
        char buf[32];
        std::snprintf(buf, sizeof buf, "%016llx", static_cast<unsigned long long>(bits));
        m_s += buf;
        return *this;
    }
    const std::string& Get() const { return m_s; }

private:
    std::string m_s;
};

int OidOf(const VyrEntity* e) {
    return e ? e->GetOid() : 0;
}

void DescribeVector(Text& t, VyrVecteur* v) {
    t << " grandeur=" << v->GetGrandeur() << " unite=" << v->GetUnite() << " size=" << v->GetSize()
      << " values=";
    for (int i = 0; i < v->GetSize(); ++i)
        t << v->GetArea()[i] << ",";
    t << " validity=";
    const VyrBitMask* mask = v->GetValidity();
    for (int k = 0; k * 8 < v->GetSize(); ++k)
        t << static_cast<int>(mask->GetOctetAt(k)) << ",";
}

void DescribeCurve(Text& t, VyrCourbe* c) {
    t << " vx=" << OidOf(c->GetVx()) << " vy=" << OidOf(c->GetVy()) << " text=" << c->GetText()
      << " colour=" << static_cast<long long>(c->GetColor().GetRGB()) << " width=" << c->GetWidth()
      << " point=" << c->GetStylePoint() << " line=" << c->GetStyleLiaison()
      << " shown=" << c->IsShownInDiagram(0) << c->IsShownInDiagram(1)
      << " scale=" << c->GetScale().GetXmin() << c->GetScale().GetXmax() << c->GetScale().GetYmin()
      << c->GetScale().GetYmax() << " notes=";
    for (wxVyrListNoteNode* n = c->GetNotes().GetFirst(); n; n = n->GetNext())
        t << OidOf(n->GetData()) << ",";
}

void DescribeExperience(Text& t, VyrExperience* e) {
    t << " curves=";
    for (wxVyrListCourbeNode* n = e->GetCourbes().GetFirst(); n; n = n->GetNext())
        t << OidOf(n->GetData()) << ",";
}

void DescribeNote(Text& t, VyrNote* n) {
    t << " text=" << n->GetText() << " type=" << n->GetType() << " index=" << n->GetPointIndex()
      << " x=" << n->GetPositionX() << " y=" << n->GetPositionY();
}

void DescribeTool(Text& t, VyrOutilInterval* o) {
    t << " etiq1=" << o->GetEtiq1() << " etiq2=" << o->GetEtiq2() << " abs=" << o->GetAbs()
      << " ord=" << o->GetOrd() << " x0=" << o->GetX0() << " y0=" << o->GetY0()
      << " x1=" << o->GetX1() << " y1=" << o->GetY1();
}

void DescribePhysio(Text& t, VyrPhysioRecord* r) {
    for (int i = 0; i < r->GetFieldCount(); ++i) {
        t << " " << r->GetField(i).key << "=";
        switch (r->GetField(i).format) {
            case VYR_PHYSIO_REAL:
                t << r->GetRealAt(i);
                break;
            case VYR_PHYSIO_INT:
                t << r->GetIntAt(i);
                break;
            default:
                t << r->GetTextAt(i);
        }
    }
}

}  // namespace

std::string Describe(VyrBaseData& doc, bool unknown, bool noteNames) {
    // One line per entity, grouped by kind: the writer writes each kind in a section of its
    // own, so a save keeps the order within a kind but not how the kinds were interleaved (an
    // experiment made up for curves that had none comes last in the list, and after a save
    // before the grid).
    std::vector<std::pair<int, std::string>> lines;
    for (wxVyrListEntityNode* node = doc.GetEntityList().GetFirst(); node; node = node->GetNext()) {
        VyrEntity* e = node->GetData();
        const int kind = e->GetKind();
        Text t;
        t << "kind=" << kind << " oid=" << e->GetOid();
        if (kind != VYR_KIND_NOTE || noteNames)
            t << " name=" << e->GetEntityName();
        switch (kind) {
            case VYR_KIND_VECTEUR:
                DescribeVector(t, static_cast<VyrVecteur*>(e));
                break;
            case VYR_KIND_COURBE:
                DescribeCurve(t, static_cast<VyrCourbe*>(e));
                break;
            case VYR_KIND_EXPERIENCE:
                DescribeExperience(t, static_cast<VyrExperience*>(e));
                break;
            case VYR_KIND_NOTE:
                DescribeNote(t, static_cast<VyrNote*>(e));
                break;
            case VYR_KIND_OUTIL_INTERVAL:
                DescribeTool(t, static_cast<VyrOutilInterval*>(e));
                break;
            case VYR_KIND_COMPTE_RENDU: {
                VyrCompteRendu* r = static_cast<VyrCompteRendu*>(e);
                t << " data=" << r->GetData() << " rtf=" << r->GetRtf();
                break;
            }
            case VYR_KIND_GRILLE: {
                VyrGrilleEntity* g = static_cast<VyrGrilleEntity*>(e);
                t << " version=" << g->GetVersion() << " data=" << g->GetData();
                break;
            }
            case VYR_KIND_IMAGE_REDY: {
                VyrImageRedyEntity* p = static_cast<VyrImageRedyEntity*>(e);
                // JPEG is lossy: the picture's size survives a save, its pixels need not.
                t << " experience=" << p->GetExperienceOid() << " position=" << p->GetPosition()
                  << " encoding=" << p->GetEncoding() << " picture=" << p->GetImage().IsOk();
                if (p->GetImage().IsOk())
                    t << "x" << p->GetImage().GetWidth() << "x" << p->GetImage().GetHeight();
                break;
            }
            default:
                if (VyrPhysioRecord::GetKindTable(kind))
                    DescribePhysio(t, static_cast<VyrPhysioRecord*>(e));
        }
        t << "\n";
        lines.emplace_back(kind, t.Get());
    }
    std::stable_sort(lines.begin(), lines.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    Text t;
    for (const auto& line : lines)
        t << line.second.c_str();
    t << "diagrams=" << doc.GetDiagramCount() << " titles=" << OidOf(doc.GetDiagramTitle(0)) << ","
      << OidOf(doc.GetDiagramTitle(1)) << "\n";
    if (unknown)
        for (const wxString& section : doc.GetUnknownSections())
            t << "unknown " << section << "\n";
    return t.Get();
}

bool IsWellFormed(VyrBaseData& doc) {
    std::set<int> oids;
    // What the writer reaches: curves through their experiments, notes through their curves
    // and the diagram titles. A note bound to nothing (its "curve" text named no curve, or named
    // it before an experiment was made up for it) stays in the document but is not written.
    std::set<const VyrEntity*> held;
    for (int slot = 0; slot < 2; ++slot)
        held.insert(doc.GetDiagramTitle(slot));
    for (wxVyrListEntityNode* node = doc.GetEntityList().GetFirst(); node; node = node->GetNext()) {
        VyrEntity* e = node->GetData();
        if (!oids.insert(e->GetOid()).second)
            return false;
        if (e->GetKind() == VYR_KIND_EXPERIENCE)
            for (wxVyrListCourbeNode* c = static_cast<VyrExperience*>(e)->GetCourbes().GetFirst();
                 c; c = c->GetNext())
                held.insert(c->GetData());
        if (e->GetKind() == VYR_KIND_COURBE)
            for (wxVyrListNoteNode* n = static_cast<VyrCourbe*>(e)->GetNotes().GetFirst(); n;
                 n = n->GetNext())
                held.insert(n->GetData());
    }
    // The writer writes the document's one report and one grid: a file can hold more.
    int reports = 0;
    int grids = 0;
    for (wxVyrListEntityNode* node = doc.GetEntityList().GetFirst(); node; node = node->GetNext()) {
        const int kind = node->GetData()->GetKind();
        if ((kind == VYR_KIND_COURBE || kind == VYR_KIND_NOTE) && !held.count(node->GetData()))
            return false;
        reports += kind == VYR_KIND_COMPTE_RENDU;
        grids += kind == VYR_KIND_GRILLE;
    }
    return reports <= 1 && grids <= 1;
}

bool ReadsBackAsWritten(VyrBaseData& doc) {
    auto plain = [](const wxString& text) { return text.find_first_of(L"\"\\") == wxString::npos; };
    // Notes go back to curves by the curve's name and its experiment's name.
    std::set<wxString> curveKeys;
    for (wxVyrListEntityNode* node = doc.GetFirstCourbeNode(); node;) {
        VyrCourbe* c = doc.GetNextCourbe(&node);
        VyrExperience* e = doc.FindExperienceFromCourbe(c);
        if (!curveKeys.insert(c->GetEntityName() + L"\n" + (e ? e->GetEntityName() : wxString()))
                 .second)
            return false;
    }
    for (wxVyrListEntityNode* node = doc.GetEntityList().GetFirst(); node; node = node->GetNext()) {
        VyrEntity* e = node->GetData();
        bool ok = true;
        switch (e->GetKind()) {
            case VYR_KIND_COURBE: {
                VyrCourbe* c = static_cast<VyrCourbe*>(e);
                ok = plain(e->GetEntityName()) && c->GetWidth() >= 1 && c->GetWidth() <= 5 &&
                     c->GetStylePoint() >= 0 && c->GetStylePoint() <= 15 &&
                     c->GetStyleLiaison() >= 0 && c->GetStyleLiaison() <= 15;
                break;
            }
            case VYR_KIND_IMAGE_REDY:
                ok = plain(e->GetEntityName());
                break;
            case VYR_KIND_EXPERIENCE:
                ok = plain(e->GetEntityName()) &&
                     plain(static_cast<VyrExperience*>(e)->GetCommentaire());
                break;
            case VYR_KIND_NOTE:
                ok = plain(static_cast<VyrNote*>(e)->GetText());
                break;
            case VYR_KIND_OUTIL_INTERVAL: {
                VyrOutilInterval* o = static_cast<VyrOutilInterval*>(e);
                ok = plain(o->GetEtiq1()) && plain(o->GetEtiq2()) && plain(o->GetAbs()) &&
                     plain(o->GetOrd());
                break;
            }
            case VYR_KIND_GRILLE:
                ok = plain(static_cast<VyrGrilleEntity*>(e)->GetData());
                break;
            case VYR_KIND_COMPTE_RENDU: {
                VyrCompteRendu* r = static_cast<VyrCompteRendu*>(e);
                ok = plain(r->GetData()) && plain(r->GetRtf());
                break;
            }
            default:
                if (VyrPhysioRecord::GetKindTable(e->GetKind())) {
                    VyrPhysioRecord* r = static_cast<VyrPhysioRecord*>(e);
                    for (int i = 0; ok && i < r->GetFieldCount(); ++i)
                        if (r->GetField(i).format == VYR_PHYSIO_TEXT ||
                            r->GetField(i).format == VYR_PHYSIO_NAME)
                            ok = plain(r->GetTextAt(i));
                }
        }
        if (!ok)
            return false;
    }
    return true;
}

void Check(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "vyrfuzz: check failed: %s\n", what);
        std::abort();
    }
}

void CheckSame(const std::string& expected, const std::string& actual, const char* what) {
    if (expected == actual)
        return;
    size_t line = 0;
    size_t start = 0;
    while (start < expected.size() && start < actual.size()) {
        const size_t endA = expected.find('\n', start);
        const size_t endB = actual.find('\n', start);
        if (endA != endB || expected.compare(start, endA - start, actual, start, endB - start) != 0)
            break;
        start = endA + 1;
        ++line;
    }
    std::fprintf(stderr, "vyrfuzz: line %zu differs:\n  expected: %s\n  actual:   %s\n", line,
                 expected.substr(start, expected.find('\n', start) - start).c_str(),
                 actual.substr(start, actual.find('\n', start) - start).c_str());
    Check(false, what);
}

}  // namespace vyrfuzz
