// Seeds of random walks.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

namespace korvex::test {

/// The same walks every time, unless KORVEX_WALK_SEED names another seed or says "random".
inline std::uint32_t walkSeed(std::uint32_t usual) {
    const char* const wanted = std::getenv("KORVEX_WALK_SEED");
    if (!wanted) {
        return usual;
    }
    return std::string(wanted) == "random" ? std::random_device()()
                                           : static_cast<std::uint32_t>(std::stoul(wanted));
}

}  // namespace korvex::test
