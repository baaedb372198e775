// Writes the seed corpus of pod_decode_fuzz into the directory given: for every record type, a sample
// record after the byte that chooses its descriptor. Usage: pod_decode_corpus DIR
#include <cstdio>
#include <fstream>
#include <string>

#include "fuzz/pod_descriptors_all.h"
#include "sim/codec/pod_json.h"
#include "sim/codec/pod_sample.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s DIR\n", argv[0]);
    return 1;
  }
  const auto& descriptors = all_pod_descriptors();
  for (size_t i = 0; i < descriptors.size(); ++i) {
    const pod_desc& desc = *descriptors[i];
    std::string bytes, err;
    if (!ostrel::sim::pod_encode_json(desc, ostrel::sim::pod_sample_json(desc, 0), &bytes, &err)) {
      std::fprintf(stderr, "%s: %s\n", desc.name, err.c_str());
      return 1;
    }
    std::ofstream out(std::string(argv[1]) + "/" + desc.name, std::ios::binary);
    out.put(static_cast<char>(i));
    out << bytes;
    if (!out) {
      std::fprintf(stderr, "%s: cannot write\n", desc.name);
      return 1;
    }
  }
  return 0;
}
