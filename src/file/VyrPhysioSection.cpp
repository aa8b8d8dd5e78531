// The seven physiology sections. Every one is written and read by the same pair of functions,
// walking the record kind's table of {key, format} (VyrPhysioRecord): the header, the "oid"
// line, then one line per table entry in table order.
#include "file/VyrReadText.h"
#include "file/VyrTextWriter.h"
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrPhysioRecord.h"

namespace {

struct PhysioSection {
    int kind;
    const wchar_t* name;  // the header without its brackets
};

const PhysioSection kPhysioSections[] = {
    {VYR_KIND_SPIROG, L"spirog"},
    {VYR_KIND_RESPIHOM_CONFIG, L"Param_RespihomConfig"},
    {VYR_KIND_RESPIHOM_DATA, L"Param_RespihomData"},
    {VYR_KIND_SPIROM, L"spirom"},
    {VYR_KIND_SPIRO_META_CONFIG, L"Param_SpiroMetaConfig"},
    {VYR_KIND_SPIRO_META_DATA, L"Param_SpiroMetaData"},
    {VYR_KIND_SPIRO_EXP, L"spiroexp"},
};

const wchar_t* SectionName(int kind) {
    for (const PhysioSection& section : kPhysioSections)
        if (section.kind == kind)
            return section.name;
    return nullptr;
}

const std::wstring_view kOidKey = L"oid";

// The index of the first table key that begins the line, or -1 (keys tried in table order,
// each as a prefix of its own length).
int MatchField(const VyrPhysioTable& table, std::wstring_view line) {
    for (int i = 0; i < table.count; ++i)
        if (VyrReadText::HasPrefix(line, table.fields[i].key))
            return i;
    return -1;
}

}  // namespace

bool VyrBaseData::SauvePhysioRecords(VyrTextWriter& out, int kind) {
    const wchar_t* name = SectionName(kind);
    if (!name)
        return out.IsOk();
    wxVyrListEntityNode* node = GetFirstEntityNode(kind);
    while (node && out.IsOk()) {
        const VyrPhysioRecord* record = static_cast<VyrPhysioRecord*>(GetNextEntity(&node, kind));
        out.Header(name).LineInt(kOidKey, record->GetOid());
        for (int i = 0; i < record->GetFieldCount(); ++i) {
            const VyrPhysioField& field = record->GetField(i);
            switch (field.format) {
                case VYR_PHYSIO_REAL:
                    out.LineG(field.key, record->GetRealAt(i));
                    break;
                case VYR_PHYSIO_INT:
                    out.LineInt(field.key, record->GetIntAt(i));
                    break;
                case VYR_PHYSIO_TEXT:
                case VYR_PHYSIO_NAME:
                    out.LineString(field.key, record->GetTextAt(i));
                    break;
            }
        }
        out.EndLine();
    }
    return out.IsOk();
}

wxString VyrBaseData::ParsePhysioRecords(int kind) {
    const VyrPhysioTable* table = VyrPhysioRecord::GetKindTable(kind);
    VyrPhysioRecord* record = nullptr;
    wxString header;
    std::wstring_view line;
    while (NextSectionLine(line, header)) {
        const int field = table ? MatchField(*table, line) : -1;
        // "oid" is tested first, except that it must not swallow a longer key of the table
        // that begins with it ("oiddataselected"), which would otherwise never be read and
        // would make a record of its own out of the selected record's oid.
        const bool longerOidKey =
            field >= 0 && std::wstring_view(table->fields[field].key).size() > kOidKey.size() &&
            VyrReadText::HasPrefix(table->fields[field].key, kOidKey);
        if (!longerOidKey && VyrReadText::HasPrefix(line, kOidKey)) {
            record = static_cast<VyrPhysioRecord*>(
                CreateEntity(kind, VyrReadText::IntValue(line), nullptr));
            continue;
        }
        if (field < 0)
            continue;
        const VyrPhysioFormat format = table->fields[field].format;
        wxString text;
        // Quoted values are consumed even before the "oid" line, continuation lines included;
        // values met before it have no record to go to and are dropped.
        if (format == VYR_PHYSIO_TEXT || format == VYR_PHYSIO_NAME)
            ReadQuoted(line, text);
        if (!record)
            continue;
        switch (format) {
            case VYR_PHYSIO_REAL:
                record->SetRealAt(field, VyrReadText::DoubleValue(line));
                break;
            case VYR_PHYSIO_INT:
                record->SetIntAt(field, VyrReadText::IntValue(line));
                break;
            case VYR_PHYSIO_TEXT:
            case VYR_PHYSIO_NAME:
                record->SetTextAt(field, text);
                break;
        }
    }
    return header;
}

bool VyrBaseData::SauveSpirog(VyrTextWriter& out) {
    return SauvePhysioRecords(out, VYR_KIND_SPIROG);
}
bool VyrBaseData::SauveSpiroExp(VyrTextWriter& out) {
    return SauvePhysioRecords(out, VYR_KIND_SPIRO_EXP);
}
bool VyrBaseData::SauveSpirom(VyrTextWriter& out) {
    return SauvePhysioRecords(out, VYR_KIND_SPIROM);
}
bool VyrBaseData::SauveRespihomConfig(VyrTextWriter& out) {
    return SauvePhysioRecords(out, VYR_KIND_RESPIHOM_CONFIG);
}
bool VyrBaseData::SauveRespihomData(VyrTextWriter& out) {
    return SauvePhysioRecords(out, VYR_KIND_RESPIHOM_DATA);
}
bool VyrBaseData::SauveSpiroMetaConfig(VyrTextWriter& out) {
    return SauvePhysioRecords(out, VYR_KIND_SPIRO_META_CONFIG);
}
bool VyrBaseData::SauveSpiroMetaData(VyrTextWriter& out) {
    return SauvePhysioRecords(out, VYR_KIND_SPIRO_META_DATA);
}

wxString VyrBaseData::ParseSpirog() {
    return ParsePhysioRecords(VYR_KIND_SPIROG);
}
wxString VyrBaseData::ParseSpiroExp() {
    return ParsePhysioRecords(VYR_KIND_SPIRO_EXP);
}
wxString VyrBaseData::ParseSpirom() {
    return ParsePhysioRecords(VYR_KIND_SPIROM);
}
wxString VyrBaseData::ParseRespihomConfig() {
    return ParsePhysioRecords(VYR_KIND_RESPIHOM_CONFIG);
}
wxString VyrBaseData::ParseRespihomData() {
    return ParsePhysioRecords(VYR_KIND_RESPIHOM_DATA);
}
wxString VyrBaseData::ParseSpiroMetaConfig() {
    return ParsePhysioRecords(VYR_KIND_SPIRO_META_CONFIG);
}
wxString VyrBaseData::ParseSpiroMetaData() {
    return ParsePhysioRecords(VYR_KIND_SPIRO_META_DATA);
}
