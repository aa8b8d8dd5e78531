// What `vyr info` reports about one document, gathered once and printed as text or JSON.
#ifndef VYR_TOOLS_DOCUMENTINFO_H
#define VYR_TOOLS_DOCUMENTINFO_H

#include <string>
#include <vector>

class VyrBaseData;

namespace vyr {

class JsonWriter;

struct AxisInfo {
    std::string quantity;
    std::string unit;
    double min = 0.0;
    double max = 0.0;
};

struct CurveInfo {
    int oid = 0;
    std::string name;
    std::string displayName;
    AxisInfo x, y;
    unsigned points = 0;
    unsigned invalidPoints = 0;
    std::vector<int> diagrams;  // the diagrams that show it
};

struct ExperimentInfo {
    int oid = 0;
    std::string name;
    std::vector<CurveInfo> curves;
};

struct NoteInfo {
    int oid = 0;
    std::string text;
    std::string attachedTo;  // the curve's name, or "title of diagram N"
    int pointIndex = -1;
};

struct IntervalInfo {
    int oid = 0;
    std::string label1, label2, abscissa, ordinate;
    double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
};

struct PictureInfo {
    int oid = 0;
    std::string name;
    int width = 0, height = 0;
};

struct RecordInfo {
    int oid = 0;
    int kind = 0;
    std::string section;
};

struct DocumentInfo {
    std::string file;
    std::string encoding;
    int diagrams = 1;
    std::vector<ExperimentInfo> experiments;
    std::vector<NoteInfo> notes;
    std::vector<IntervalInfo> intervals;
    bool report = false;
    bool grid = false;
    std::vector<PictureInfo> pictures;
    std::vector<RecordInfo> records;
    unsigned unknownSections = 0;
};

// Gathers the description of a loaded document.
DocumentInfo Describe(VyrBaseData& doc, const std::string& file, const std::string& encoding);
// Human-readable form.
std::string FormatText(const DocumentInfo& info);
// One JSON object.
void WriteJson(JsonWriter& json, const DocumentInfo& info);

}  // namespace vyr

#endif
