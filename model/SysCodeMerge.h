#pragma once

// Takes an imported system-code tree into the specialty's tree.
class CSysCodeData;

// Merges `source` into the tree whose top node is `targetRoot`. Codes whose full
// name already exists keep their place and index and take the imported attributes;
// the others are appended, with their subtrees, numbered on from `counter`. Nothing
// is deleted. With `isRoot` the source node is an imported root and only its
// children count. False when a code could not be placed (a nameless code, or a
// null argument); everything that could be placed is.
bool MergeSysCodeTree(int& counter, CSysCodeData* targetRoot, const CSysCodeData* source, bool isRoot);
