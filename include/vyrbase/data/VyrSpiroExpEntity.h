// An expiration record (entity kind 14), section "[spiroexp]": the same values as a
// spirogram record.
// Values are held by key (see VyrPhysioRecord).
#ifndef VYRBASE_DATA_VYRSPIROEXPENTITY_H
#define VYRBASE_DATA_VYRSPIROEXPENTITY_H

#include "vyrbase/core/VyrExport.h"
#include "vyrbase/data/VyrPhysioRecord.h"

class VYRBASE_API VyrSpiroExpEntity : public VyrPhysioRecord {
public:
    VyrSpiroExpEntity(int oid, VyrBaseData* base);
    VyrSpiroExpEntity(const VyrSpiroExpEntity&) = default;
    VyrSpiroExpEntity& operator=(const VyrSpiroExpEntity&) = default;
    ~VyrSpiroExpEntity() override;

    int GetKind() const override { return VYR_KIND_SPIRO_EXP; }
};

#endif
