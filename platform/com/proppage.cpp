// The task allocator that property page strings and page lists are handed over in.
#include "proppage.h"
#include <cstdlib>

void* CoTaskMemAlloc(size_t cb) { return std::malloc(cb ? cb : 1); }
void CoTaskMemFree(void* pv) { std::free(pv); }
