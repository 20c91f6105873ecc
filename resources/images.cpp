#include "fold.bmp.h"
#include "fold.ico.h"
#include "resources/resources.h"

// Both show a rectangular pulse and a decaying one overlap, and the bump that their convolution is.
static constexpr BinaryResource bitmaps[] = {
    {bitmapModule, languageGerman, foldBitmap, sizeof foldBitmap}};
static constexpr BinaryResource icons[] = {{iconModule, languageGerman, foldIcon, sizeof foldIcon}};

constinit const std::span<const BinaryResource> moduleBitmaps = bitmaps;
constinit const std::span<const BinaryResource> moduleIcons = icons;
