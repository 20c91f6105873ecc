#include "workbench/parts/hdf5/Hdf5Attributes.h"

#include <new>
#include <string_view>

static constexpr std::size_t mostBytes = std::size_t{1} << 20;

static herr_t keepName(hid_t /*object*/, const char* name, const H5A_info_t* /*info*/,
                       void* names) {
    try {
        static_cast<std::vector<std::string>*>(names)->emplace_back(name);
        return 0;
    } catch (const std::bad_alloc&) {
        return -1;
    }
}

std::vector<std::string> Hdf5Attributes::names() const {
    std::vector<std::string> all;
    H5Aiterate2(object, H5_INDEX_NAME, H5_ITER_INC, nullptr, keepName, &all);
    return all;
}

namespace {

struct OpenAttribute {
    OpenAttribute(hid_t object, const std::string& name)
        : id(H5Aopen(object, name.c_str(), H5P_DEFAULT), H5Aclose),
          type(H5Aget_type(id.get()), H5Tclose),
          space(H5Aget_space(id.get()), H5Sclose),
          count(static_cast<std::size_t>(succeeded(H5Sget_simple_extent_npoints(space.get())))) {}

    // The bytes that its values take in memory, as that type; 0: too many, or none.
    [[nodiscard]] std::size_t bytesAs(hid_t memory) const {
        const std::size_t size = H5Tget_size(memory);
        return size == 0 || count > mostBytes / size ? 0 : count * size;
    }

    Hdf5Handle id, type, space;
    std::size_t count;
};

}  // namespace

std::vector<double> Hdf5Attributes::numbers(const std::string& name) const {
    try {
        const OpenAttribute attribute(object, name);
        const H5T_class_t kind = H5Tget_class(attribute.type.get());
        if ((kind != H5T_INTEGER && kind != H5T_FLOAT) ||
            attribute.bytesAs(attribute.type.get()) == 0) {
            return {};
        }
        std::vector<double> values(attribute.count);
        succeeded(H5Aread(attribute.id.get(), H5T_NATIVE_DOUBLE, values.data()));
        return values;
    } catch (const Hdf5Error&) {
        return {};
    }
}

static std::vector<std::string> longTexts(const OpenAttribute& attribute) {
    std::vector<char*> values(attribute.count);
    succeeded(H5Aread(attribute.id.get(), attribute.type.get(), values.data()));
    std::vector<std::string> texts;
    texts.reserve(values.size());
    for (const char* const value : values) {
        texts.emplace_back(value == nullptr ? "" : value);
    }
    H5Dvlen_reclaim(attribute.type.get(), attribute.space.get(), H5P_DEFAULT, values.data());
    return texts;
}

// Of one length, filled up with zeros or blanks.
static std::vector<std::string> evenTexts(const OpenAttribute& attribute) {
    const std::size_t size = H5Tget_size(attribute.type.get());
    std::string values(attribute.bytesAs(attribute.type.get()), '\0');
    succeeded(H5Aread(attribute.id.get(), attribute.type.get(), values.data()));
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < attribute.count; ++i) {
        std::string_view text = std::string_view(values).substr(i * size, size);
        text = text.substr(0, text.find('\0'));
        texts.emplace_back(text.substr(0, text.find_last_not_of(' ') + 1));
    }
    return texts;
}

std::vector<std::string> Hdf5Attributes::texts(const std::string& name) const {
    try {
        const OpenAttribute attribute(object, name);
        if (H5Tget_class(attribute.type.get()) != H5T_STRING ||
            attribute.bytesAs(attribute.type.get()) == 0) {
            return {};
        }
        return succeeded(H5Tis_variable_str(attribute.type.get())) > 0 ? longTexts(attribute)
                                                                       : evenTexts(attribute);
    } catch (const Hdf5Error&) {
        return {};
    }
}
