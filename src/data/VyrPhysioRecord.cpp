// The tables of the seven physiology kinds and the record that holds values by them.
#include "vyrbase/data/VyrPhysioRecord.h"

namespace {

// "[spirom]" holds the eleven values of "[spirog]" and "[spiroexp]" first, so the three
// tables share one array.
constexpr int kSpirogFieldCount = 11;
const VyrPhysioField kSpiromFields[] = {
    {L"exp", VYR_PHYSIO_TEXT, 0},
    {L"vc", VYR_PHYSIO_REAL, 0},
    {L"vri", VYR_PHYSIO_REAL, 0},
    {L"vre", VYR_PHYSIO_REAL, 0},
    {L"vi", VYR_PHYSIO_REAL, 0},
    {L"ve", VYR_PHYSIO_REAL, 0},
    {L"tps", VYR_PHYSIO_REAL, 0},
    {L"vvp", VYR_PHYSIO_REAL, 0},
    {L"vvt", VYR_PHYSIO_REAL, 0},
    {L"fr", VYR_PHYSIO_REAL, 0},
    {L"dm", VYR_PHYSIO_REAL, 0},
    {L"spvr", VYR_PHYSIO_REAL, 0},
    {L"spvt", VYR_PHYSIO_REAL, 0},
    {L"spvm", VYR_PHYSIO_REAL, 0},
    {L"spvins", VYR_PHYSIO_REAL, 0},
    {L"spvexp", VYR_PHYSIO_REAL, 0},
    {L"spacq", VYR_PHYSIO_INT, 0},
    {L"spage", VYR_PHYSIO_REAL, 0},
    {L"sptaille", VYR_PHYSIO_REAL, 0},
    // A boy unless set otherwise.
    {L"spgarcon", VYR_PHYSIO_INT, 1},
    {L"spresinsp", VYR_PHYSIO_REAL, 0},
    {L"spvcourant", VYR_PHYSIO_REAL, 0},
    {L"spresexp", VYR_PHYSIO_REAL, 0},
};

// -1: no data record selected.
const VyrPhysioField kConfigFields[] = {
    {L"name", VYR_PHYSIO_NAME, 0},
    {L"oiddataselected", VYR_PHYSIO_INT, -1},
};

const VyrPhysioField kRespihomDataFields[] = {
    {L"name", VYR_PHYSIO_NAME, 0},      {L"type", VYR_PHYSIO_INT, 0},
    {L"irmoy", VYR_PHYSIO_TEXT, 0},     {L"qr", VYR_PHYSIO_TEXT, 0},
    {L"puissance", VYR_PHYSIO_TEXT, 0}, {L"metabolisme", VYR_PHYSIO_TEXT, 0},
};

const VyrPhysioField kSpiroMetaDataFields[] = {
    {L"name", VYR_PHYSIO_NAME, 0},  {L"type", VYR_PHYSIO_INT, 0},
    {L"irmoy", VYR_PHYSIO_TEXT, 0}, {L"puissance", VYR_PHYSIO_TEXT, 0},
    {L"metab", VYR_PHYSIO_TEXT, 0},
};

template <size_t N>
constexpr int Count(const VyrPhysioField (&)[N]) {
    return static_cast<int>(N);
}

const VyrPhysioTable kSpirogTable = {kSpiromFields, kSpirogFieldCount};
const VyrPhysioTable kSpiromTable = {kSpiromFields, Count(kSpiromFields)};
const VyrPhysioTable kConfigTable = {kConfigFields, Count(kConfigFields)};
const VyrPhysioTable kRespihomDataTable = {kRespihomDataFields, Count(kRespihomDataFields)};
const VyrPhysioTable kSpiroMetaDataTable = {kSpiroMetaDataFields, Count(kSpiroMetaDataFields)};

}  // namespace

const VyrPhysioTable* VyrPhysioRecord::GetKindTable(int kind) {
    switch (kind) {
        case VYR_KIND_SPIROG:
        case VYR_KIND_SPIRO_EXP:
            return &kSpirogTable;
        case VYR_KIND_SPIROM:
            return &kSpiromTable;
        case VYR_KIND_RESPIHOM_CONFIG:
        case VYR_KIND_SPIRO_META_CONFIG:
            return &kConfigTable;
        case VYR_KIND_RESPIHOM_DATA:
            return &kRespihomDataTable;
        case VYR_KIND_SPIRO_META_DATA:
            return &kSpiroMetaDataTable;
        default:
            return nullptr;
    }
}

VyrPhysioRecord::VyrPhysioRecord(int oid, VyrBaseData* base, int kind)
    : VyrEntity(oid, base), m_pTable(GetKindTable(kind)) {
    static const VyrPhysioTable kEmpty = {nullptr, 0};
    if (!m_pTable)
        m_pTable = &kEmpty;
    m_values.resize(m_pTable->count);
    for (int i = 0; i < m_pTable->count; ++i)
        m_values[i].integer = m_pTable->fields[i].defaultValue;
}

VyrPhysioRecord::~VyrPhysioRecord() = default;

int VyrPhysioRecord::FindField(const wxString& key) const {
    for (int i = 0; i < m_pTable->count; ++i)
        if (key == m_pTable->fields[i].key)
            return i;
    return -1;
}

bool VyrPhysioRecord::HasFormat(int index, VyrPhysioFormat format) const {
    return index >= 0 && index < m_pTable->count && m_pTable->fields[index].format == format;
}

double VyrPhysioRecord::GetRealAt(int index) const {
    return HasFormat(index, VYR_PHYSIO_REAL) ? m_values[index].real : 0.0;
}

int VyrPhysioRecord::GetIntAt(int index) const {
    return HasFormat(index, VYR_PHYSIO_INT) ? m_values[index].integer : 0;
}

wxString VyrPhysioRecord::GetTextAt(int index) const {
    if (HasFormat(index, VYR_PHYSIO_NAME))
        return GetEntityName();
    return HasFormat(index, VYR_PHYSIO_TEXT) ? m_values[index].text : wxString();
}

bool VyrPhysioRecord::SetRealAt(int index, double value) {
    if (!HasFormat(index, VYR_PHYSIO_REAL))
        return false;
    m_values[index].real = value;
    return true;
}

bool VyrPhysioRecord::SetIntAt(int index, int value) {
    if (!HasFormat(index, VYR_PHYSIO_INT))
        return false;
    m_values[index].integer = value;
    return true;
}

bool VyrPhysioRecord::SetTextAt(int index, const wxString& value) {
    if (HasFormat(index, VYR_PHYSIO_NAME)) {
        SetEntityName(value.wc_str());
        return true;
    }
    if (!HasFormat(index, VYR_PHYSIO_TEXT))
        return false;
    m_values[index].text = value;
    return true;
}
