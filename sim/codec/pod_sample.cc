#include "sim/codec/pod_sample.h"

#include <map>
#include <string>

#include "sim/codec/pod_program.h"

namespace ostrel::sim {
namespace codec {
namespace {

using nlohmann::json;

class Sampler {
 public:
  Sampler(const CompiledType& type, uint32_t seed) : t_(type), state_(seed * 2654435761u + 0x9e3779b9u) {}

  json program(int32_t index, int depth) {
    const Program& p = t_.program(index);
    if (p.single_value()) return value(p.steps[0], depth);
    // A union chosen by an earlier field decides that field's value, so the cases are picked first.
    std::map<size_t, const UnionCase*> chosen;
    std::map<size_t, int64_t> forced;
    for (size_t i = 0; i < p.steps.size(); ++i) {
      if (p.steps[i].selector < 0) continue;
      const UnionCase* c = pick(*t_.union_of(p.steps[i]));
      chosen[i] = c;
      forced[static_cast<size_t>(p.steps[i].selector)] = c == nullptr ? 0 : c->value;
    }
    json out = json::object();
    for (size_t i = 0; i < p.steps.size(); ++i) {
      const Step& s = p.steps[i];
      if (auto f = forced.find(i); f != forced.end()) {
        out[field_key(s, i)] = f->second;
      } else if (auto c = chosen.find(i); c != chosen.end()) {
        json u = json::object();
        if (c->second != nullptr && c->second->program >= 0)
          u[c->second->name] = program(c->second->program, depth + 1);
        out[field_key(s, i)] = u;
      } else {
        out[field_key(s, i)] = value(s, depth);
      }
    }
    return out;
  }

 private:
  uint32_t next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return state_;
  }

  // Cases with a value are preferred: an empty case exercises less.
  const UnionCase* pick(const UnionProgram& u) {
    if (u.cases.empty()) return nullptr;
    size_t start = next() % u.cases.size();
    for (size_t i = 0; i < u.cases.size(); ++i) {
      const UnionCase& c = u.cases[(start + i) % u.cases.size()];
      if (c.program >= 0) return &c;
    }
    return &u.cases[start];
  }

  std::string text(uint32_t limit) {
    // Built by appends: g++ 12 at -O3 warns wrongly about the "t" + std::string form.
    std::string t = std::to_string(next());
    t.insert(t.begin(), 't');
    t.push_back('-');
    t.append(std::to_string(next()));
    if (limit != 0 && t.size() > limit) t.resize(limit);
    return t;
  }

  json value(const Step& s, int depth) {
    switch (s.kind) {
      case Kind::kBool:
        return true;
      case Kind::kU8:
        return next() % 255 + 1;
      case Kind::kU16:
        return next() % 65535 + 1;
      case Kind::kU32:
        return next() | 0x80000000u;
      case Kind::kI32:
        return -static_cast<int32_t>(next() % 0x7fffffff) - 1;
      case Kind::kU64:
        return (uint64_t{next()} << 32 | next()) | 0x8000000000000000ull;
      case Kind::kI64:
        return -static_cast<int64_t>((uint64_t{next()} << 31) | next()) - 1;
      case Kind::kEnum:
        return next() % 16 + 1;
      case Kind::kIpv4:
        return std::to_string(next() % 223 + 1) + "." + std::to_string(next() % 256) + "." +
               std::to_string(next() % 256) + "." + std::to_string(next() % 255 + 1);
      case Kind::kText:
        return text(s.count);
      case Kind::kBytes: {
        if (s.hint == 's') return text(s.count);
        static const char kDigits[] = "0123456789abcdef";
        std::string hex;
        for (uint32_t i = 0; i < s.count; ++i) {
          uint32_t b = next() % 255 + 1;
          hex += kDigits[b >> 4];
          hex += kDigits[b & 0xf];
        }
        return hex;
      }
      case Kind::kArray: {
        json out = json::array();
        for (int i = 0; depth < 3 && i < 2; ++i) out.push_back(program(s.sub, depth + 1));
        return out;
      }
      case Kind::kFixedArray: {
        json out = json::array();
        for (uint32_t i = 0; i < s.count && i < 3; ++i) out.push_back(program(s.sub, depth + 1));
        return out;
      }
      case Kind::kPointer:
        return depth < 2 ? program(s.sub, depth + 1) : json(nullptr);
      case Kind::kStruct:
        return program(s.sub, depth + 1);
      case Kind::kUnion: {
        const UnionProgram& u = t_.union_at(s.sub);
        const UnionCase* c = pick(u);
        json out = json::object();
        out[u.selector.empty() ? "discriminator" : u.selector] = c == nullptr ? 0 : c->value;
        if (c != nullptr && c->program >= 0) out[c->name] = program(c->program, depth + 1);
        return out;
      }
      case Kind::kEmpty:
        break;
    }
    return nullptr;
  }

  const CompiledType& t_;
  uint32_t state_;
};

}  // namespace
}  // namespace codec

nlohmann::json pod_sample_json(const pod_desc& desc, uint32_t seed) {
  std::string err;
  const codec::CompiledType* t = codec::compile(&desc, &err);
  if (t == nullptr) return nullptr;
  return codec::Sampler(*t, seed).program(t->root, 0);
}

}  // namespace ostrel::sim
