#pragma once

namespace regalon {

struct AppContext;

/// Creates the error service of the program. Until it ran, data classes have nobody to report to.
void Main(AppContext& context);

}  // namespace regalon
