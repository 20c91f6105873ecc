// A library that loads without trouble, but has only some of a module's exports.
extern "C" int InitDLL() {
    return 1;
}
