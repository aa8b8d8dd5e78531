// A spirometry record (entity kind 11), section "[spirom]".
// Its record fields arrive with the file sections that carry them.
#ifndef VYRBASE_DATA_VYRSPIROMENTITY_H
#define VYRBASE_DATA_VYRSPIROMENTITY_H

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrSpiromEntity : public VyrEntity {
public:
    VyrSpiromEntity(int oid, VyrBaseData* base);
    ~VyrSpiromEntity() override;

    int GetKind() const override { return VYR_KIND_SPIROM; }
};

#endif
