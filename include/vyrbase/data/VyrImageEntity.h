// An older picture record (entity kind 15); no file section leads to it.
// Its record fields arrive with the file sections that carry them.
#ifndef VYRBASE_DATA_VYRIMAGEENTITY_H
#define VYRBASE_DATA_VYRIMAGEENTITY_H

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrImageEntity : public VyrEntity {
public:
    VyrImageEntity(int oid, VyrBaseData* base);
    ~VyrImageEntity() override;

    int GetKind() const override { return VYR_KIND_IMAGE; }
};

#endif
