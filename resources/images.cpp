#include "fold.bmp.h"
#include "fold.ico.h"
#include "resources/resources.h"

// Both show a rectangular pulse and a decaying one that overlap, and the bump that is their
// convolution. They stand under German alone, where every language finds them.
static constexpr BinaryResource bitmaps[] = {
    {bitmapModule, languageGerman, foldBitmap, sizeof foldBitmap}};
static constexpr BinaryResource icons[] = {{iconModule, languageGerman, foldIcon, sizeof foldIcon}};

constinit const std::span<const BinaryResource> moduleBitmaps = bitmaps;
constinit const std::span<const BinaryResource> moduleIcons = icons;
