// Base of the seven records of the breathing and metabolism modules (entity kinds 8 to 14).
// Each kind holds a fixed set of named values, described by one static table of {key, format,
// default}; the record stores one value per entry of its kind's table, and the file section of
// each kind is written and read by walking that same table.
//
// Errors: a key that the record's table does not hold, or a key of another format, reads as
// 0, 0.0 or an empty text and is not written (the setters answer false).
#ifndef VYRBASE_DATA_VYRPHYSIORECORD_H
#define VYRBASE_DATA_VYRPHYSIORECORD_H

#include <vector>

#include <wx/string.h>

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

// How a value is held and written.
enum VyrPhysioFormat {
    VYR_PHYSIO_REAL,  // a double, written "%g"
    VYR_PHYSIO_INT,   // an int, written "%d"
    VYR_PHYSIO_TEXT,  // a text, written quoted "%s"
    VYR_PHYSIO_NAME   // the entity name, written quoted "%s"
};

struct VyrPhysioField {
    const wchar_t* key;
    VyrPhysioFormat format;
    // The constructed value of an int field (real fields start at 0.0, texts empty).
    int defaultValue;
};

struct VyrPhysioTable {
    const VyrPhysioField* fields;
    int count;
};

class VYRBASE_API VyrPhysioRecord : public VyrEntity {
public:
    // Plain value holders: copies carry every value (and the entity's oid and name).
    VyrPhysioRecord(const VyrPhysioRecord&) = default;
    VyrPhysioRecord& operator=(const VyrPhysioRecord&) = default;
    ~VyrPhysioRecord() override;

    // The table of a physiology kind (8..14), or null for any other kind.
    static const VyrPhysioTable* GetKindTable(int kind);

    const VyrPhysioTable& GetTable() const { return *m_pTable; }
    int GetFieldCount() const { return m_pTable->count; }
    const VyrPhysioField& GetField(int index) const { return m_pTable->fields[index]; }
    // Index of the field with exactly that key, or -1.
    int FindField(const wxString& key) const;

    // By key.
    double GetReal(const wxString& key) const { return GetRealAt(FindField(key)); }
    int GetInt(const wxString& key) const { return GetIntAt(FindField(key)); }
    // Also answers the entity name for a "name" field.
    wxString GetText(const wxString& key) const { return GetTextAt(FindField(key)); }
    bool SetReal(const wxString& key, double value) { return SetRealAt(FindField(key), value); }
    bool SetInt(const wxString& key, int value) { return SetIntAt(FindField(key), value); }
    bool SetText(const wxString& key, const wxString& value) {
        return SetTextAt(FindField(key), value);
    }

    // By field index (the table's order); an index out of range or of another format reads as
    // 0 / empty and is not written.
    double GetRealAt(int index) const;
    int GetIntAt(int index) const;
    wxString GetTextAt(int index) const;
    bool SetRealAt(int index, double value);
    bool SetIntAt(int index, int value);
    bool SetTextAt(int index, const wxString& value);

protected:
    // `kind` must be one of 8..14: the record takes that kind's table and its defaults.
    VyrPhysioRecord(int oid, VyrBaseData* base, int kind);

private:
    struct Value {
        double real = 0.0;
        int integer = 0;
        wxString text;
    };

    bool HasFormat(int index, VyrPhysioFormat format) const;

    const VyrPhysioTable* m_pTable;
    std::vector<Value> m_values;
};

#endif
