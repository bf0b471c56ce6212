#include "platform/framework/message_map.h"

namespace zel::framework {

AFX_PMSG FindHandler(const AFX_MSGMAP* map, UINT message, UINT code, UINT id) {
    while (map != nullptr) {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->nMessage != 0; ++entry) {
            if (entry->nMessage == message && entry->nCode == code && id >= entry->nID && id <= entry->nLastID)
                return entry->pfn;
        }
        map = map->pfnGetBaseMap != nullptr ? map->pfnGetBaseMap() : nullptr;
    }
    return nullptr;
}

}  // namespace zel::framework
