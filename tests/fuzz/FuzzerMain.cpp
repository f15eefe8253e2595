// One fuzzer; the build says which function ZARVY_FUZZ_TARGET is, and which header declares it.

#include <cstddef>
#include <cstdint>

#include ZARVY_FUZZ_HEADER

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zarvy::fuzz::ZARVY_FUZZ_TARGET({data, size});
  return 0;
}
