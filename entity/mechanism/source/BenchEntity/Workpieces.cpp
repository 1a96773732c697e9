#include <algorithm>
#include <host/workpiece/Workpiece.h>
#include <mechanism/BenchEntity.h>
#include <utility>

int BenchEntity::AddWorkpiece(Workpiece* w) {
    if (w == nullptr) {
        return -1;
    }
    BenchEntity* const before = std::exchange(w->carrier, this);
    if (!workpieces.insert(w).second) {
        return -1;
    }
    w->TellAtEnd(*this, [this, w] { workpieces.erase(w); });
    TellAtEnd(*w, [this, w] {
        if (w->carrier == this) {
            w->carrier = nullptr;
        }
    });
    Json::Value place(Json::objectValue);
    place["link_hash"] = Json::UInt64(GetPlacementLinkHash());
    int index = GetFlangeSize();
    for (int k = 0; k < GetFlangeSize(); ++k) {
        const GenericEntity* attached = GetFlangeByIndex(k)->attached;
        if (attached == nullptr) {
            index = std::min(index, k);
        } else if (attached == w) {
            return k;
        }
    }
    place["install_index"] = index;
    if (const Flange* free = GetFlangeByIndex(index)) {
        place["link_hash"] = Json::UInt64(free->linkHash);
    }
    try {
        AssembleOtherModel(w, place);
    } catch (...) {
        workpieces.erase(w);
        w->carrier = before;
        throw;
    }
    return index;
}

void BenchEntity::DeleteWorkpiece(Workpiece* w) {
    if (w == nullptr) {
        return;
    }
    w->carrier = nullptr;
    w->SetAssembleTrsf(gp_Trsf());
    workpieces.erase(w);
}

void BenchEntity::Delete() {
    for (Workpiece* w : workpieces) {
        w->carrier = nullptr;
    }
    workpieces.clear();
}
