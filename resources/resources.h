#pragma once

#include "platform/ResourceChain.h"

#include <span>

// What the module shows. All tables are constant-initialised: they are complete before the first
// constructor of the library runs. The numbers are fixed: hosts ask for bitmap and label by theirs.

// Ids of strings, which exist in German and English.
constexpr unsigned stringModuleLabel = 53278;  // long text, line feed, short name
constexpr unsigned stringVersionConflict = 53622;
constexpr unsigned stringSignal1 = 53638;
constexpr unsigned stringSignal2 = 53640;
constexpr unsigned stringFoldedSignal = 53641;
constexpr unsigned stringUnfoldedSignal = 53642;
constexpr unsigned stringPortConflict = 53643;
constexpr unsigned stringLastError = 53644;
constexpr unsigned stringLoopCount = 53645;
constexpr unsigned stringZeroElementDeviation = 53646;
constexpr unsigned stringOneElementDeviation = 53647;
constexpr unsigned stringKernel = 53648;

constexpr unsigned bitmapModule = 129;  // 16 by 15 pixels, 16 colours, a BMP file
constexpr unsigned iconModule = 130;    // 32 by 32 pixels, 16 colours, an ICO file

// The settings dialog and its controls.
constexpr unsigned dialogSettings = 144;
constexpr unsigned radioPerBlock = 1040;
constexpr unsigned radioPerPacket = 1041;
constexpr unsigned radioConvolution = 1025;
constexpr unsigned radioDeconvolution = 1026;
constexpr unsigned radioTimeDomain = 1023;
constexpr unsigned radioFrequencyDomain = 1024;
constexpr unsigned radioVanCittert = 1027;
constexpr unsigned radioPseudoInverse = 1028;
constexpr unsigned editConvergence = 1030;
constexpr unsigned editMaxIterations = 1031;
constexpr unsigned checkAbortAtError = 1032;
constexpr unsigned editErrorValue = 1034;
constexpr unsigned checkAbortAtMinError = 1033;
constexpr unsigned listScaling = 1036;
constexpr unsigned buttonHelp = 1002;

extern const std::span<const StringResource> moduleStrings;
extern const std::span<const BinaryResource> moduleBitmaps;
extern const std::span<const BinaryResource> moduleIcons;
extern const std::span<const DialogResource> moduleDialogs;
