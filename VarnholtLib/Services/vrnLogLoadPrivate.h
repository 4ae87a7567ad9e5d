#pragma once

/// The steps of vrnLog for the load table.
namespace Varnholt {

/// Creates the null log.
void CreateNullLog() noexcept;
/// Releases it.
void ReleaseNullLog() noexcept;

}  // namespace Varnholt
