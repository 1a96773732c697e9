#include <host/workpiece/Flange.h>

#include <host/workpiece/LinkRod.h>

Flange::Flange(LinkRod* onLink, const gp_Trsf& mount) : mountTrsf(mount) { SetLink(onLink); }

void Flange::SetLink(LinkRod* onLink) {
    link = onLink;
    linkHash = onLink != nullptr ? onLink->linkHash : 0;
}
