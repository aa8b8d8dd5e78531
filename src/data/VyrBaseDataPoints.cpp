// Editing a curve point by point. X and Y are kept the same length; code 1 announces the change
// when the caller asks for it.
#include "vyrbase/core/VyrBaseData.h"
#include "vyrbase/data/VyrCourbe.h"
#include "vyrbase/data/VyrVecteur.h"

void VyrBaseData::AddPoint(VyrCourbe* c, double x, double y, bool notify) {
    if (!c || !c->GetVx() || !c->GetVy())
        return;
    VyrVecteur* vx = c->GetVx();
    VyrVecteur* vy = c->GetVy();
    int n = vx->GetSize();
    // Y follows X's length, whatever its own was.
    vx->Resize(n + 1);
    vy->Resize(n + 1);
    // The validity of the new position is left alone: an invalid mark left there by an earlier
    // removal or emptying stays (callers that need the point valid call ValidePoint).
    vx->SetVal(n, x);
    vy->SetVal(n, y);
    if (notify)
        Notify(VYR_MSG_DATA_CHANGED, c);
}

int VyrBaseData::AddSortPoint(VyrCourbe* c, double x, double y, bool replace, bool notify) {
    if (!c || !c->GetVx() || !c->GetVy())
        return -1;
    VyrVecteur* vx = c->GetVx();
    VyrVecteur* vy = c->GetVy();
    int pos = 0;
    if (vx->GetSortPosition(x, &pos)) {
        if (replace) {
            vx->SetVal(pos, x);
            vy->SetVal(pos, y);
        }
    } else {
        int n = vx->GetSize() + 1;
        vx->Resize(n);
        vy->Resize(n);
        if (vx->GetSize() != n || vy->GetSize() != n)
            return -1;  // out of memory
        vx->InsertVal(pos, x);
        vy->InsertVal(pos, y);
        vx->ValidateAt(pos, true);
        vy->ValidateAt(pos, true);
    }
    if (notify)
        Notify(VYR_MSG_DATA_CHANGED, c);
    return pos;
}

void VyrBaseData::RemovePointAt(VyrCourbe* c, int index, bool notify) {
    if (!c)
        return;
    if (c->GetVx())
        c->GetVx()->RemoveValAt(index);
    if (c->GetVy())
        c->GetVy()->RemoveValAt(index);
    if (notify)
        Notify(VYR_MSG_DATA_CHANGED, c);
}

void VyrBaseData::ValidePoint(VyrCourbe* c, bool valid, bool notify) {
    if (!c)
        return;
    // Only Y's mark of the last point: X's mark is left as it is.
    int last = static_cast<int>(c->GetSize()) - 1;
    if (c->GetVy() && last >= 0 && last < c->GetVy()->GetSize())
        c->GetVy()->ValidateAt(last, valid);
    if (notify)
        Notify(VYR_MSG_DATA_CHANGED, nullptr);
}

void VyrBaseData::RazCourbe(VyrCourbe* c, bool notify) {
    if (!c)
        return;
    if (c->GetVx())
        c->GetVx()->Raz();
    if (c->GetVy())
        c->GetVy()->Raz();
    if (notify)
        Notify(VYR_MSG_DATA_CHANGED, nullptr);
}
