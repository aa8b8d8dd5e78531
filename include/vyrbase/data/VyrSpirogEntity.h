// A spirogram record (entity kind 8), section "[spirog]".
// Its record fields arrive with the file sections that carry them.
#ifndef VYRBASE_DATA_VYRSPIROGENTITY_H
#define VYRBASE_DATA_VYRSPIROGENTITY_H

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrSpirogEntity : public VyrEntity {
public:
    VyrSpirogEntity(int oid, VyrBaseData* base);
    ~VyrSpirogEntity() override;

    int GetKind() const override { return VYR_KIND_SPIROG; }
};

#endif
