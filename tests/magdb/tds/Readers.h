#pragma once

#include <cstdint>
#include <span>

/// Feeds a client's bytes through every reader of the server: packets first, then each message in every
/// version. Refusals are what is expected; anything else that is thrown passes through.
void readEverything(std::span<const std::uint8_t> stream);
