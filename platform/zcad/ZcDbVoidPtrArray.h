#pragma once

// The array explode fills: each element is a new ZcDbEntity* the caller deletes.
#include <vector>

class ZcDbVoidPtrArray : public std::vector<void*>
{
public:
    int length() const { return int(size()); }
    bool isEmpty() const { return empty(); }
    void* at(int i) const { return (*this)[size_t(i)]; }
    ZcDbVoidPtrArray& append(void* element)
    {
        push_back(element);
        return *this;
    }
};
