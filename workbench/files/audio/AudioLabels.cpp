#include "workbench/files/audio/AudioLabels.h"

#include "platform/Windows1252.h"
#include "workbench/messages/Printable.h"

#include <algorithm>
#include <array>

namespace {

struct Word {
    int code;
    const char* word;
};

}  // namespace

static constexpr std::array tagWords = {
    Word{SF_STR_TITLE, "title"},     Word{SF_STR_ARTIST, "artist"},
    Word{SF_STR_ALBUM, "album"},     Word{SF_STR_TRACKNUMBER, "track"},
    Word{SF_STR_GENRE, "genre"},     Word{SF_STR_DATE, "date"},
    Word{SF_STR_COMMENT, "comment"}, Word{SF_STR_COPYRIGHT, "copyright"},
    Word{SF_STR_LICENSE, "license"}};

// The last three are other codes for what stands first.
static constexpr std::array speakerWords = {
    Word{SF_CHANNEL_MAP_LEFT, "front left"},
    Word{SF_CHANNEL_MAP_RIGHT, "front right"},
    Word{SF_CHANNEL_MAP_CENTER, "front center"},
    Word{SF_CHANNEL_MAP_LFE, "low frequencies"},
    Word{SF_CHANNEL_MAP_REAR_LEFT, "back left"},
    Word{SF_CHANNEL_MAP_REAR_RIGHT, "back right"},
    Word{SF_CHANNEL_MAP_FRONT_LEFT_OF_CENTER, "front left of center"},
    Word{SF_CHANNEL_MAP_FRONT_RIGHT_OF_CENTER, "front right of center"},
    Word{SF_CHANNEL_MAP_REAR_CENTER, "back center"},
    Word{SF_CHANNEL_MAP_SIDE_LEFT, "side left"},
    Word{SF_CHANNEL_MAP_SIDE_RIGHT, "side right"},
    Word{SF_CHANNEL_MAP_TOP_CENTER, "top center"},
    Word{SF_CHANNEL_MAP_TOP_FRONT_LEFT, "top front left"},
    Word{SF_CHANNEL_MAP_TOP_FRONT_CENTER, "top front center"},
    Word{SF_CHANNEL_MAP_TOP_FRONT_RIGHT, "top front right"},
    Word{SF_CHANNEL_MAP_TOP_REAR_LEFT, "top back left"},
    Word{SF_CHANNEL_MAP_TOP_REAR_CENTER, "top back center"},
    Word{SF_CHANNEL_MAP_TOP_REAR_RIGHT, "top back right"},
    Word{SF_CHANNEL_MAP_MONO, "mono"},
    Word{SF_CHANNEL_MAP_AMBISONIC_B_W, "ambisonic W"},
    Word{SF_CHANNEL_MAP_AMBISONIC_B_X, "ambisonic X"},
    Word{SF_CHANNEL_MAP_AMBISONIC_B_Y, "ambisonic Y"},
    Word{SF_CHANNEL_MAP_AMBISONIC_B_Z, "ambisonic Z"},
    Word{SF_CHANNEL_MAP_FRONT_LEFT, "front left"},
    Word{SF_CHANNEL_MAP_FRONT_RIGHT, "front right"},
    Word{SF_CHANNEL_MAP_FRONT_CENTER, "front center"}};

// The older formats leave open what letters beyond ASCII are. What is not UTF-8 comes from Windows.
static std::string inUtf8(const char* text) {
    return isUtf8(text) ? text : toUtf8(CString(text));
}

static std::vector<std::string> readSpeakers(SNDFILE* sound, int channels) {
    std::vector<int> codes(static_cast<std::size_t>(channels));
    const auto size = static_cast<int>(codes.size() * sizeof(int));
    if (sf_command(sound, SFC_GET_CHANNEL_MAP_INFO, codes.data(), size) != SF_TRUE) {
        return {};
    }
    std::vector<std::string> speakers;
    for (const int code : codes) {
        const auto* const row =
            std::find_if(speakerWords.begin(), speakerWords.end(),
                         [code](const Word& each) { return each.code == code; });
        if (row == speakerWords.end()) {
            return {};
        }
        speakers.emplace_back(row->word);
    }
    return speakers;
}

SoundLabels readLabels(SNDFILE* sound, int channels) {
    SoundLabels labels;
    for (const Word& tag : tagWords) {
        const char* const text = sf_get_string(sound, tag.code);
        if (text != nullptr && *text != '\0') {
            labels.tags.push_back({tag.word, inUtf8(text)});
        }
    }
    labels.speakers = readSpeakers(sound, channels);
    return labels;
}

void writeLabels(SNDFILE* sound, const SoundLabels& labels) {
    for (const SoundLabels::Tag& tag : labels.tags) {
        const auto* const row =
            std::find_if(tagWords.begin(), tagWords.end(),
                         [&](const Word& each) { return each.word == tag.name; });
        if (row != tagWords.end()) {
            sf_set_string(sound, row->code, tag.text.c_str());
        }
    }
    if (!labels.speakers.empty()) {
        writeSpeakers(sound, labels.speakers);
    }
}

bool writeSpeakers(SNDFILE* sound, const std::vector<std::string>& speakers) {
    std::vector<int> codes;
    for (const std::string& speaker : speakers) {
        const auto* const row =
            std::find_if(speakerWords.begin(), speakerWords.end(),
                         [&](const Word& each) { return each.word == speaker; });
        codes.push_back(row == speakerWords.end() ? SF_CHANNEL_MAP_INVALID : row->code);
    }
    return sf_command(sound, SFC_SET_CHANNEL_MAP_INFO, codes.data(),
                      static_cast<int>(codes.size() * sizeof(int))) == SF_TRUE;
}
