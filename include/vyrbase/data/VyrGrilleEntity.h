// The grid of the application's table view (entity kind 6), carried in section "[cellules]".
// Its record fields arrive with the file sections that carry them.
#ifndef VYRBASE_DATA_VYRGRILLEENTITY_H
#define VYRBASE_DATA_VYRGRILLEENTITY_H

#include "vyrbase/core/VyrEntity.h"
#include "vyrbase/core/VyrExport.h"

class VYRBASE_API VyrGrilleEntity : public VyrEntity {
public:
    VyrGrilleEntity(int oid, VyrBaseData* base);
    ~VyrGrilleEntity() override;

    int GetKind() const override { return VYR_KIND_GRILLE; }
};

#endif
