// Decoding speed of the channel-group decoder, and what it allocates per message.
#include <benchmark/benchmark.h>

#include <atomic>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <vector>

#include "channels/QuillonChannelgroupDecoder.h"

namespace {

std::atomic<std::uint64_t> allocations{0};

}  // namespace

// Every allocation of the process is counted, so a decode that allocates shows up. The
// replaced pair allocates with malloc and frees with free, which GCC cannot see through.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif
void* operator new(std::size_t size) {
  allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* p = std::malloc(size ? size : 1)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace {

using namespace quillon;

constexpr std::uint16_t kChannels = 1000;

struct Message {
  std::vector<unsigned char> bytes;
  void Le(std::uint64_t v, int n) {
    for (int i = 0; i < n; ++i) bytes.push_back(static_cast<unsigned char>(v >> (8 * i)));
  }
  void F64(double v) { Le(std::bit_cast<std::uint64_t>(v), 8); }
  void Header(std::uint16_t flags) {
    Le(flags, 2);
    Le(4, 2);
    for (char c : {'A', 'r', 'm', '1'}) bytes.push_back(static_cast<unsigned char>(c));
    Le(2, 4);
    Le(kChannels, 2);
  }
};

struct Sum1D : ZrValueDecodingCallbackInterface1D {
  double sum = 0;
  void ValueDecoded(ZrValue1D* v) override { sum += v->GetValue(); }
};

struct Sum6D : ZrValueDecodingCallbackInterface6D {
  double sum = 0;
  void ValueDecoded(ZrValue6D* v) override { sum += v->Position(0) + v->Rotation(2, 2); }
};

template <class Receiver>
void Decode(benchmark::State& state, const Message& message, Receiver& receiver, QuillonChannelgroupDecoder& decoder) {
  const std::uint64_t before = allocations.load();
  for (auto _ : state) {
    benchmark::DoNotOptimize(decoder.DecodeChannelgroup(message.bytes.data(), message.bytes.size()));
    benchmark::ClobberMemory();
  }
  const std::uint64_t after = allocations.load();
  benchmark::DoNotOptimize(receiver.sum);
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * kChannels);
  state.counters["allocs_per_msg"] = static_cast<double>(after - before) /
                                     static_cast<double>(std::max<benchmark::IterationCount>(state.iterations(), 1));
  state.counters["bytes_per_msg"] = static_cast<double>(message.bytes.size());
}

void BM_Decode1D(benchmark::State& state) {
  Message message;
  message.Header(0x000D);
  for (std::uint32_t i = 0; i < kChannels; ++i) {
    message.bytes.push_back(1);
    message.F64(i * 0.5);
    message.Le(0, 4);
    message.Le(1000 + i, 4);
  }
  Sum1D receiver;
  QuillonChannelgroupDecoder decoder;
  for (std::uint32_t i = 0; i < kChannels; ++i) decoder.Register1D("Arm1", 2, i, &receiver);
  Decode(state, message, receiver, decoder);
}
BENCHMARK(BM_Decode1D);

void BM_Decode6D(benchmark::State& state) {
  Message message;
  message.Header(0x000D);
  for (std::uint32_t i = 0; i < kChannels; ++i) {
    message.bytes.push_back(3);
    for (double v : {1.0 * i, 2.0, 3.0, 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0}) message.F64(v);
    message.Le(0, 4);
    message.Le(1000 + i, 4);
  }
  Sum6D receiver;
  QuillonChannelgroupDecoder decoder;
  for (std::uint32_t i = 0; i < kChannels; ++i) decoder.Register6D("Arm1", 2, i, &receiver);
  Decode(state, message, receiver, decoder);
}
BENCHMARK(BM_Decode6D);

}  // namespace

BENCHMARK_MAIN();
