#pragma once

class CSysCodeData;

// Merges an imported tree into a specialty's tree by full name: codes that exist
// take the imported attributes and keep their place and index; new codes are
// appended with their subtree and numbered after `counter`; nothing is removed.
void MergeScnTree(int& counter, CSysCodeData& target, const CSysCodeData& source);
