// The defining form of MemorySearch.
#ifndef KVUTILS_TESTS_REFERENCE_MEMORY_SEARCH_H_
#define KVUTILS_TESTS_REFERENCE_MEMORY_SEARCH_H_

namespace kv::reference {

inline int MemorySearch(const unsigned char* hay, unsigned haySize, const unsigned char* needle,
                        unsigned needleSize) {
  if (haySize < needleSize) return -1;
  for (unsigned place = 0; place <= haySize - needleSize; ++place) {
    unsigned i = 0;
    while (i < needleSize && hay[place + i] == needle[i]) ++i;
    if (i == needleSize) return static_cast<int>(place);
  }
  return -1;
}

}  // namespace kv::reference

#endif  // KVUTILS_TESTS_REFERENCE_MEMORY_SEARCH_H_
