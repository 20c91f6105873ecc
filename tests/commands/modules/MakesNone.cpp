// A module library with all its exports, whose allocation always fails.
class B_BasisModule;

extern "C" {
B_BasisModule* GetModuleInstance() {
    return nullptr;
}
void DeleteModuleInstance(B_BasisModule* /*module*/) {}
int InitDLL() {
    return 1;
}
unsigned GetBitmapID() {
    return 0;
}
unsigned GetBitmapStringResource() {
    return 0;
}
int IsDebug() {
    return 0;
}
const char* GetCID() {
    return "";
}
int theApp = 0;
}
