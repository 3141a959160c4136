#pragma once

namespace quorvane {

class Store;

// Closes the gaps of lists in a tree of which not everything could be saved: an entry that lacks a value
// which no read may miss goes, and the later ones move down. The counters tell the new lengths; where one is
// lost, the list ends at its first gap.
void MendLists(Store& store);

} // namespace quorvane
