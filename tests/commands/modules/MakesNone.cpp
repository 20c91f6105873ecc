// A module library with all its exports, whose allocation always fails. What nobody calls is data.
class B_BasisModule;

extern "C" {
B_BasisModule* GetModuleInstance() {
    return nullptr;
}
int InitDLL() {
    return 1;
}
int DeleteModuleInstance, GetBitmapID, GetBitmapStringResource, IsDebug, GetCID, theApp;
}
