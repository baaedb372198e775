// Every descriptor of the program in one list, in group and registration order: an input's first byte
// chooses one by its index, so the order is part of the seed corpus.
#pragma once

#include <vector>

#include "access/pod_descriptors.h"

inline const std::vector<const pod_desc*>& all_pod_descriptors() {
  static const std::vector<const pod_desc*> all = [] {
    std::vector<const pod_desc*> out;
    for (auto group : {ostrel_mrib_pods(), ostrel_mfwd_pods()})
      out.insert(out.end(), group.begin(), group.end());
    return out;
  }();
  return all;
}
