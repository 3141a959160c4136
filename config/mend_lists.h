#pragma once

namespace quorvane {

class Store;

// Closes the gaps of lists in a tree of which not everything could be saved: an entry that lost its first
// value goes, and the later ones move down; what else it lost and no read may miss becomes the default. The
// counters tell the new lengths; where one is lost, the list ends at its first gap.
void MendLists(Store& store);

} // namespace quorvane
