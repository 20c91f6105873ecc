#include "resources/resources.h"

// The texts are fixed as they stand, "convolution core" and the capitals included. The label's
// V2.00 is the version of the module; a load compares that of the record, in FoldModule.
static constexpr StringResource strings[] = {
    {stringModuleLabel, languageGerman, "Fendra V2.00 (kmz/5510762)\nFendra"},
    {stringModuleLabel, languageEnglish, "Fendra V2.00 (kmz/5510762)\nFendra"},

    {stringVersionConflict, languageGerman,
     "Die aus der Datei eingelesenen Werte sind inkompatibel zur gegenwärtig verwendeten "
     "Modulversion.\n\n"
     "Das Modul im Signalgraph wird durch die aktuelle Version ersetzt\n"
     "und mit Standard-Werten initialisiert!"},
    {stringVersionConflict, languageEnglish,
     "The values read from file are incompatible with the currently used module version.\n\n"
     "The module of the signal graph will be replaced with the current version\n"
     "and will be initialized with default values!"},

    {stringSignal1, languageGerman, "Signal 1"},
    {stringSignal1, languageEnglish, "signal 1"},
    {stringSignal2, languageGerman, "Signal 2"},
    {stringSignal2, languageEnglish, "signal 2"},
    {stringFoldedSignal, languageGerman, "gefaltetes Signal"},
    {stringFoldedSignal, languageEnglish, "convolved signal"},
    {stringUnfoldedSignal, languageGerman, "entfaltetes Signal"},
    {stringUnfoldedSignal, languageEnglish, "deconvolved signal"},
    {stringPortConflict, languageGerman, "Versionskonflikt!"},
    {stringPortConflict, languageEnglish, "version conflict!"},
    {stringLastError, languageGerman, "letzter Fehler"},
    {stringLastError, languageEnglish, "last error"},
    {stringLoopCount, languageGerman, "Schleifenanzahl"},
    {stringLoopCount, languageEnglish, "number of loop steps"},
    {stringZeroElementDeviation, languageGerman, "Abweichung der 0-Elemente"},
    {stringZeroElementDeviation, languageEnglish, "deviation of 0-elements"},
    {stringOneElementDeviation, languageGerman, "Abweichung des 1-Elementes"},
    {stringOneElementDeviation, languageEnglish, "deviation of the 1-element"},
    {stringKernel, languageGerman, "Faltungskern"},
    {stringKernel, languageEnglish, "convolution core"},
};

constinit const std::span<const StringResource> moduleStrings = strings;
