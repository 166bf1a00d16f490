// How fast received bytes become packets, however many they are and however they arrive. Beside
// each case stands one pass of memchr over the same bytes, which is the least that looking at each
// of them once can cost.

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <string_view>

#include "wire/server_packet_codec.h"
#include "wire/server_packet_framing.h"

using namespace lineweir;

namespace {

constexpr std::size_t megabyte = 1024 * 1024;
constexpr std::size_t network_read = 1448;
// In none of the streams, so that a search for it goes to the end.
constexpr int absent_byte = 0x60;

std::string frame_with(std::size_t buffer_length) {
  ServerPacket packet;
  packet.CMD = static_cast<std::uint8_t>(ServerCommand::SrvLineStatus);
  packet.set_buffer(std::string(buffer_length, 'N'));
  pad(packet.Buffer);
  return framed(body_of(packet));
}

// At least `length` bytes of whole frames.
std::string stream_of(const std::string& frame, std::size_t length) {
  std::string stream;
  while (stream.size() < length) stream += frame;
  return stream;
}

std::string endless() { return std::string(start_marker) + std::string(megabyte, 'x'); }

// One pass over the stream in pieces of this length, cutting after each as the timer does; returns
// the number of frames.
std::size_t receive(const std::string& stream, std::size_t piece) {
  ReceiveBuffer buffer;
  std::size_t frames = 0;
  for (std::size_t begin = 0; begin < stream.size(); begin += piece) {
    buffer.append(std::string_view(stream).substr(begin, piece));
    while (const auto body = buffer.first_body()) {
      benchmark::DoNotOptimize(packet_of(*body));
      buffer.drop_first();
      ++frames;
    }
  }
  return frames;
}

void measure(benchmark::State& state, const std::string& stream, std::size_t piece) {
  std::size_t frames = 0;
  for (auto _ : state) frames += receive(stream, piece);
  state.SetBytesProcessed(static_cast<std::int64_t>(stream.size()) * state.iterations());
  state.SetItemsProcessed(static_cast<std::int64_t>(frames));
}

void pass_of_memchr(benchmark::State& state, const std::string& stream) {
  for (auto _ : state)
    benchmark::DoNotOptimize(std::memchr(stream.data(), absent_byte, stream.size()));
  state.SetBytesProcessed(static_cast<std::int64_t>(stream.size()) * state.iterations());
}

void small_frames(benchmark::State& state) {
  measure(state, stream_of(frame_with(1), megabyte), network_read);
}
void small_frames_byte_by_byte(benchmark::State& state) {
  measure(state, stream_of(frame_with(1), megabyte), 1);
}
void frames_of_32_kilobytes(benchmark::State& state) {
  measure(state, stream_of(frame_with(32767), megabyte), network_read);
}
void megabyte_without_end_100_bytes_at_a_time(benchmark::State& state) {
  measure(state, endless(), 100);
}
void megabytes_without_end_100_bytes_at_a_time(benchmark::State& state) {
  std::string stream(start_marker);
  stream.append(megabyte * static_cast<std::size_t>(state.range(0)), 'x');
  measure(state, stream, 100);
}
void memchr_over_small_frames(benchmark::State& state) {
  pass_of_memchr(state, stream_of(frame_with(1), megabyte));
}
void memchr_over_frames_of_32_kilobytes(benchmark::State& state) {
  pass_of_memchr(state, stream_of(frame_with(32767), megabyte));
}
void memchr_over_megabyte_without_end(benchmark::State& state) { pass_of_memchr(state, endless()); }

BENCHMARK(small_frames);
BENCHMARK(small_frames_byte_by_byte);
BENCHMARK(memchr_over_small_frames);
BENCHMARK(frames_of_32_kilobytes);
BENCHMARK(memchr_over_frames_of_32_kilobytes);
BENCHMARK(megabyte_without_end_100_bytes_at_a_time);
BENCHMARK(megabytes_without_end_100_bytes_at_a_time)->Arg(4)->Arg(16);
BENCHMARK(memchr_over_megabyte_without_end);

}  // namespace
