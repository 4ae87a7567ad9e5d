#pragma once

/// The steps of vrnCurveFit for the load table.
namespace Varnholt {

/// Creates the registry, and registers and holds the built-in fits.
void CreateFits() noexcept;
/// Frees the registry.
void FreeFits() noexcept;
/// Releases the built-in fits.
void ReleaseFits() noexcept;

}  // namespace Varnholt
