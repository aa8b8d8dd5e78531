// An expiration record (entity kind 14), section "[spiroexp]".
// Its record fields arrive with the file sections that carry them.
#ifndef VYRBASE_DATA_VYRSPIROEXPENTITY_H
#define VYRBASE_DATA_VYRSPIROEXPENTITY_H

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrSpiroExpEntity : public VyrEntity {
public:
    VyrSpiroExpEntity(int oid, VyrBaseData* base);
    ~VyrSpiroExpEntity() override;

    int GetKind() const override { return VYR_KIND_SPIRO_EXP; }
};

#endif
