// Test-only access to the document's protected members (declared friend by VyrBaseData).
#ifndef VYR_TESTS_SUPPORT_VYRBASEDATATESTACCESS_H
#define VYR_TESTS_SUPPORT_VYRBASEDATATESTACCESS_H

#include "vyrbase/core/VyrBaseData.h"

class VyrBaseDataTestAccess {
public:
    static VyrEntity* CreateEntity(VyrBaseData& doc, int kind, int oid, const wchar_t* name) {
        return doc.CreateEntity(kind, oid, name);
    }
};

#endif
