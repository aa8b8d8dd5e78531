#include "DocumentInfo.h"

#include <algorithm>
#include <charconv>

#include "JsonWriter.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrExperience.h"
#include "vyrbase/data/VyrImageRedyEntity.h"
#include "vyrbase/data/VyrNote.h"
#include "vyrbase/data/VyrOutilInterval.h"
#include "vyrbase/data/VyrPhysioRecord.h"
#include "vyrbase/data/VyrVecteur.h"
#include "vyrbase/diagram/VyrDiagram.h"

namespace vyr {

namespace {

std::string Utf8(const wxString& s) {
    return std::string(s.utf8_str());
}

// Shortest round-trip text of a double, independent of the process locale.
std::string Number(double v) {
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, v);
    return std::string(buffer, result.ptr);
}

AxisInfo Axis(const VyrVecteur* v) {
    AxisInfo axis;
    if (v) {
        axis.quantity = Utf8(v->GetGrandeur());
        axis.unit = Utf8(v->GetUnite());
        // The range of what was measured: an invalid point's stored number is left out (a
        // vector without a valid point keeps 0 to 0).
        bool any = false;
        for (int i = 0; i < v->GetSize(); ++i) {
            if (!v->IsValidAt(i))
                continue;
            const double value = v->GetArea()[i];
            axis.min = any ? std::min(axis.min, value) : value;
            axis.max = any ? std::max(axis.max, value) : value;
            any = true;
        }
    }
    return axis;
}

CurveInfo Curve(VyrBaseData& doc, VyrCourbe* c) {
    CurveInfo info;
    info.oid = c->GetOid();
    info.name = Utf8(c->GetEntityName());
    info.displayName = Utf8(c->GetName());
    info.x = Axis(c->GetVx());
    info.y = Axis(c->GetVy());
    info.points = c->GetSize();
    info.invalidPoints = info.points - c->GetTrueSize();
    for (int d = 0; d < doc.GetDiagramCount(); ++d)
        if (c->IsShownInDiagram(d))
            info.diagrams.push_back(d);
    return info;
}

// Pictures and the physiology records.
void DescribeRecords(VyrBaseData& doc, DocumentInfo& info) {
    wxVyrListEntityNode* node = doc.GetFirstImageRedyEntityNode();
    while (node) {
        VyrImageRedyEntity* picture = doc.GetNextImageRedyEntity(&node);
        PictureInfo p;
        p.oid = picture->GetOid();
        p.name = Utf8(picture->GetEntityName());
        if (picture->GetImage().IsOk()) {
            p.width = picture->GetImage().GetWidth();
            p.height = picture->GetImage().GetHeight();
        }
        info.pictures.push_back(p);
    }
    for (auto* n = doc.GetEntityList().GetFirst(); n; n = n->GetNext()) {
        const int kind = n->GetData()->GetKind();
        if (!VyrPhysioRecord::GetKindTable(kind))
            continue;
        RecordInfo r;
        r.oid = n->GetData()->GetOid();
        r.kind = kind;
        info.records.push_back(r);
    }
}

}  // namespace

DocumentInfo Describe(VyrBaseData& doc, const std::string& file, const std::string& encoding) {
    DocumentInfo info;
    info.file = file;
    info.encoding = encoding;
    info.diagrams = doc.GetDiagramCount();

    wxVyrListEntityNode* node = doc.GetFirstExperienceNode();
    while (node) {
        VyrExperience* e = doc.GetNextExperience(&node);
        ExperimentInfo experiment;
        experiment.oid = e->GetOid();
        experiment.name = Utf8(e->GetEntityName());
        wxVyrListCourbeNode* cnode = e->GetFirstCourbeNode();
        while (cnode)
            experiment.curves.push_back(Curve(doc, e->GetNextCourbe(&cnode)));
        info.experiments.push_back(experiment);
    }

    node = doc.GetFirstCourbeNode();
    while (node) {
        VyrCourbe* c = doc.GetNextCourbe(&node);
        for (auto* n = c->GetNotes().GetFirst(); n; n = n->GetNext()) {
            NoteInfo note;
            note.oid = n->GetData()->GetOid();
            note.text = Utf8(n->GetData()->GetText());
            note.attachedTo = Utf8(c->GetEntityName());
            note.pointIndex = n->GetData()->GetPointIndex();
            info.notes.push_back(note);
        }
    }
    for (int d = 0; d < 2; ++d) {
        if (VyrNote* title = doc.GetDiagram(d)->GetNoteTitre()) {
            NoteInfo note;
            note.oid = title->GetOid();
            note.text = Utf8(title->GetText());
            note.attachedTo = "title of diagram " + std::to_string(d);
            info.notes.push_back(note);
        }
    }

    node = doc.GetFirstOutilIntervalNode();
    while (node) {
        VyrOutilInterval* t = doc.GetNextOutilInterval(&node);
        IntervalInfo tool;
        tool.oid = t->GetOid();
        tool.label1 = Utf8(t->GetEtiq1());
        tool.label2 = Utf8(t->GetEtiq2());
        tool.abscissa = Utf8(t->GetAbs());
        tool.ordinate = Utf8(t->GetOrd());
        tool.x0 = t->GetX0();
        tool.y0 = t->GetY0();
        tool.x1 = t->GetX1();
        tool.y1 = t->GetY1();
        info.intervals.push_back(tool);
    }

    info.report = doc.GetCompteRenduEntity(false, nullptr) != nullptr;
    info.grid = doc.GetGrilleEntity(false, nullptr) != nullptr;
    info.unknownSections = static_cast<unsigned>(doc.GetUnknownSections().GetCount());
    DescribeRecords(doc, info);
    return info;
}

std::string FormatText(const DocumentInfo& info) {
    std::string out = info.file + "\n";
    out += "  encoding: " + info.encoding + "\n";
    out += "  diagrams: " + std::to_string(info.diagrams) + "\n";
    for (const ExperimentInfo& e : info.experiments) {
        out += "  experiment " + std::to_string(e.oid) + " \"" + e.name +
               "\": " + std::to_string(e.curves.size()) + " curve(s)\n";
        for (const CurveInfo& c : e.curves) {
            out += "    curve " + std::to_string(c.oid) + " \"" + c.name + "\" " + c.displayName +
                   ": " + std::to_string(c.points) + " points (" + std::to_string(c.invalidPoints) +
                   " invalid)\n";
            out += "      x: " + c.x.quantity + " [" + c.x.unit + "] from " + Number(c.x.min) +
                   " to " + Number(c.x.max) + "\n";
            out += "      y: " + c.y.quantity + " [" + c.y.unit + "] from " + Number(c.y.min) +
                   " to " + Number(c.y.max) + "\n";
        }
    }
    out += "  notes: " + std::to_string(info.notes.size()) + "\n";
    for (const NoteInfo& n : info.notes)
        out +=
            "    note " + std::to_string(n.oid) + " on " + n.attachedTo + ": \"" + n.text + "\"\n";
    out += "  interval tools: " + std::to_string(info.intervals.size()) + "\n";
    for (const IntervalInfo& t : info.intervals)
        out += "    tool " + std::to_string(t.oid) + " \"" + t.label1 + "\" (" + t.abscissa + ", " +
               t.ordinate + ") from (" + Number(t.x0) + ", " + Number(t.y0) + ") to (" +
               Number(t.x1) + ", " + Number(t.y1) + ")\n";
    out += std::string("  report: ") + (info.report ? "yes" : "no") + "\n";
    out += std::string("  grid: ") + (info.grid ? "yes" : "no") + "\n";
    out += "  pictures: " + std::to_string(info.pictures.size()) + "\n";
    for (const PictureInfo& p : info.pictures)
        out += "    picture " + std::to_string(p.oid) + " \"" + p.name +
               "\": " + std::to_string(p.width) + "x" + std::to_string(p.height) + "\n";
    out += "  physiology records: " + std::to_string(info.records.size()) + "\n";
    for (const RecordInfo& r : info.records)
        out += "    record " + std::to_string(r.oid) + " of kind " + std::to_string(r.kind) +
               (r.section.empty() ? "" : " " + r.section) + "\n";
    out += "  unknown sections kept: " + std::to_string(info.unknownSections) + "\n";
    return out;
}

void WriteJson(JsonWriter& json, const DocumentInfo& info) {
    auto axis = [&](const char* key, const AxisInfo& a) {
        json.Key(key);
        json.BeginObject();
        json.Member("quantity", a.quantity);
        json.Member("unit", a.unit);
        json.Member("min", a.min);
        json.Member("max", a.max);
        json.EndObject();
    };
    json.BeginObject();
    json.Member("file", info.file);
    json.Member("encoding", info.encoding);
    json.Member("diagrams", info.diagrams);
    json.Key("experiments");
    json.BeginArray();
    for (const ExperimentInfo& e : info.experiments) {
        json.BeginObject();
        json.Member("oid", e.oid);
        json.Member("name", e.name);
        json.Key("curves");
        json.BeginArray();
        for (const CurveInfo& c : e.curves) {
            json.BeginObject();
            json.Member("oid", c.oid);
            json.Member("name", c.name);
            json.Member("display_name", c.displayName);
            axis("x", c.x);
            axis("y", c.y);
            json.Member("points", c.points);
            json.Member("invalid_points", c.invalidPoints);
            json.Key("diagrams");
            json.BeginArray();
            for (int d : c.diagrams)
                json.Integer(d);
            json.EndArray();
            json.EndObject();
        }
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
    json.Key("notes");
    json.BeginArray();
    for (const NoteInfo& n : info.notes) {
        json.BeginObject();
        json.Member("oid", n.oid);
        json.Member("text", n.text);
        json.Member("attached_to", n.attachedTo);
        json.Member("point_index", n.pointIndex);
        json.EndObject();
    }
    json.EndArray();
    json.Key("interval_tools");
    json.BeginArray();
    for (const IntervalInfo& t : info.intervals) {
        json.BeginObject();
        json.Member("oid", t.oid);
        json.Member("label1", t.label1);
        json.Member("label2", t.label2);
        json.Member("abscissa", t.abscissa);
        json.Member("ordinate", t.ordinate);
        json.Member("x0", t.x0);
        json.Member("y0", t.y0);
        json.Member("x1", t.x1);
        json.Member("y1", t.y1);
        json.EndObject();
    }
    json.EndArray();
    json.Member("report", info.report);
    json.Member("grid", info.grid);
    json.Key("pictures");
    json.BeginArray();
    for (const PictureInfo& p : info.pictures) {
        json.BeginObject();
        json.Member("oid", p.oid);
        json.Member("name", p.name);
        json.Member("width", p.width);
        json.Member("height", p.height);
        json.EndObject();
    }
    json.EndArray();
    json.Key("physiology_records");
    json.BeginArray();
    for (const RecordInfo& r : info.records) {
        json.BeginObject();
        json.Member("oid", r.oid);
        json.Member("kind", r.kind);
        json.Member("section", r.section);
        json.EndObject();
    }
    json.EndArray();
    json.Member("unknown_sections", info.unknownSections);
    json.EndObject();
}

}  // namespace vyr
