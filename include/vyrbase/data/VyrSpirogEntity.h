// A spirogram record (entity kind 8), section "[spirog]": "exp" and ten real values.
// Values are held by key (see VyrPhysioRecord).
#ifndef VYRBASE_DATA_VYRSPIROGENTITY_H
#define VYRBASE_DATA_VYRSPIROGENTITY_H

#include "vyrbase/core/VyrExport.h"
#include "vyrbase/data/VyrPhysioRecord.h"

class VYRBASE_API VyrSpirogEntity : public VyrPhysioRecord {
public:
    VyrSpirogEntity(int oid, VyrBaseData* base);
    VyrSpirogEntity(const VyrSpirogEntity&) = default;
    VyrSpirogEntity& operator=(const VyrSpirogEntity&) = default;
    ~VyrSpirogEntity() override;

    int GetKind() const override { return VYR_KIND_SPIROG; }
};

#endif
