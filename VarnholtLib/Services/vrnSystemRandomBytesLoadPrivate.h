#pragma once

/// The steps of vrnSystemRandomBytes for the load table.
namespace Varnholt {

/// Creates the source of the system's random bytes.
void CreateSystemRandomBytes() noexcept;
/// Releases it.
void ReleaseSystemRandomBytes() noexcept;

}  // namespace Varnholt
