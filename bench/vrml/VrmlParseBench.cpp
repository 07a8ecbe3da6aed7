// Reading speed and memory of the VRML reader on the generated scenes.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <string>

#include "SceneGenerator.h"
#include "vrml/Nodes.h"

namespace {

// Live and peak heap bytes, counted by the replaced global allocation functions below.
bool counting = false;
std::size_t liveBytes = 0;
std::size_t peakBytes = 0;

void* allocate(std::size_t size) {
  void* p = std::malloc(size ? size : 1);
  if (!p) throw std::bad_alloc();
  if (!counting) return p;
  liveBytes += malloc_usable_size(p);
  if (liveBytes > peakBytes) peakBytes = liveBytes;
  return p;
}

void release(void* p) {
  if (!p) return;
  if (counting) liveBytes -= malloc_usable_size(p);
  std::free(p);
}

struct NumberCount : VRML::NodeVisitor {
  std::size_t bytes = 0;
  std::size_t nodes = 0;
  void visitNode(const VRML::Node& node) override {
    ++nodes;
    for (const VRML::Field& record : node.fields()) {
      const VRML::FieldValue* value = record.value.get();
      if (const auto* single = dynamic_cast<const VRML::SFNode*>(value); single && single->node) {
        single->node->accept(*this);
      } else if (const auto* list = dynamic_cast<const VRML::MFNode*>(value)) {
        for (const auto& child : list->nodes)
          if (child) child->accept(*this);
      } else if (const auto* ints = dynamic_cast<const VRML::MFInt32*>(value)) {
        bytes += ints->values.size() * sizeof(std::int32_t);
      } else if (const auto* points = dynamic_cast<const VRML::MFVec3f*>(value)) {
        bytes += points->values.size() * sizeof(VRML::Vec3f);
      } else if (const auto* colors = dynamic_cast<const VRML::MFColor*>(value)) {
        bytes += colors->values.size() * sizeof(VRML::Color3f);
      }
    }
  }
};

void readScene(benchmark::State& state, const std::string& text) {
  for (auto _ : state) {
    auto root = std::make_unique<VRML::Group>();
    const int result = root->parse(text);
    benchmark::DoNotOptimize(result);
    if (result != 0) state.SkipWithError("the scene did not read");
    // Only the reading is timed, not the model's destruction.
    state.PauseTiming();
    root.reset();
    state.ResumeTiming();
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));

  // One more read to measure memory: the model's size, and the peak above the text while reading.
  counting = true;
  auto root = std::make_unique<VRML::Group>();
  root->parse(text);
  const std::size_t model = liveBytes;
  const std::size_t peak = peakBytes;
  NumberCount numbers;
  root->accept(numbers);
  state.counters["nodes"] = static_cast<double>(numbers.nodes);
  state.counters["text_MB"] = static_cast<double>(text.size()) / 1e6;
  state.counters["model_MB"] = static_cast<double>(model) / 1e6;
  state.counters["peak_over_model"] = static_cast<double>(peak) / static_cast<double>(model);
  if (numbers.bytes)
    state.counters["model_over_numbers"] = static_cast<double>(model) / static_cast<double>(numbers.bytes);
}

const std::string& mesh() {
  static const std::string text = quillon::bench::meshScene();
  return text;
}
const std::string& parts() {
  static const std::string text = quillon::bench::partsScene();
  return text;
}
const std::string& chains() {
  static const std::string text = quillon::bench::chainsScene();
  return text;
}

// The same 10,000 Transforms in chains of the given depth: the cost of a node must not grow
// with how deep it sits.
void BM_ReadChainsOfDepth(benchmark::State& state) {
  const int depth = static_cast<int>(state.range(0));
  const std::string text = quillon::bench::chainsScene(10000 / depth, depth);
  readScene(state, text);
}

void BM_ReadMesh(benchmark::State& state) { readScene(state, mesh()); }
void BM_ReadParts(benchmark::State& state) { readScene(state, parts()); }
void BM_ReadChains(benchmark::State& state) { readScene(state, chains()); }

BENCHMARK(BM_ReadMesh)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_ReadParts)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_ReadChains)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_ReadChainsOfDepth)->Arg(100)->Arg(200)->Arg(400)->Arg(800)->Unit(benchmark::kMillisecond)->MinTime(1.0);

}  // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* p) noexcept { release(p); }
void operator delete[](void* p) noexcept { release(p); }
void operator delete(void* p, std::size_t) noexcept { release(p); }
void operator delete[](void* p, std::size_t) noexcept { release(p); }

BENCHMARK_MAIN();
