#include "resources/resources.h"

using enum ControlKind;

// The texts are fixed as they stand: "Algoritmus", "Deconvolusion", "Diréction du algorithme", the
// blanks at the end of some, and mnemonics that differ from language to language. So is the tab
// order, in which the error value comes before the second check box.

// Places keep a margin of 7 units and, between frames and between buttons, 6. A label has 4 units
// for each character, a fifth more than a proportional font takes on average; radios and check
// boxes have 12 more for their mark. A frame holds the rows that follow it.

static constexpr ControlResource germanControls[] = {
    {0, frame, false, 7, 7, 70, 46, "Abarbeitung"},
    {radioPerBlock, radio, true, 14, 19, 56, 10, "&blockweise"},
    {radioPerPacket, radio, false, 14, 36, 56, 10, "&paketweise"},
    {0, frame, false, 83, 7, 114, 46, "Algorithmusrichtung"},
    {radioConvolution, radio, true, 90, 19, 100, 10, "F&altung"},
    {radioDeconvolution, radio, false, 90, 36, 100, 10, "&Entfaltung"},
    {0, frame, false, 7, 59, 190, 77, "Verfahren"},
    {radioTimeDomain, radio, true, 14, 71, 180, 10, "Rechnen im &Zeitbereich"},
    {radioFrequencyDomain, radio, false, 14, 87, 180, 10, "Rechnen im &Frequenzbereich"},
    {radioVanCittert, radio, false, 14, 103, 180, 10, "Modifizierter Algoritmus nach van &Cittert"},
    {radioPseudoInverse, radio, false, 14, 119, 180, 10, "Entfaltung mit pseudo-inversem Fil&ter"},
    {0, frame, false, 203, 7, 202, 129, "Parameter für Entfaltung nach van Cittert"},
    {0, label, true, 210, 20, 134, 8, "&Konvergenzparameter :"},
    {editConvergence, edit, false, 348, 17, 50, 14, ""},
    {0, label, true, 210, 37, 134, 8, "Maximale Anzahl der &Iterationen :"},
    {editMaxIterations, edit, false, 348, 34, 50, 14, ""},
    {checkAbortAtError, checkBox, false, 210, 71, 134, 10, "Abbr&uch bei Fehlerwert :"},
    {editErrorValue, edit, false, 348, 69, 50, 14, ""},
    {checkAbortAtMinError, checkBox, false, 210, 87, 188, 10, "Abbruch bei &minimalem Fehler"},
    {0, frame, false, 7, 142, 398, 33, "Parameter für Entfaltung mit pseudo-inversem Filter"},
    {0, label, true, 14, 157, 162, 8, "&Skalierung des pseudo-inversen Filters :"},
    {listScaling, dropDown, false, 178, 154, 220, 14, ""},
    {0, line, false, 7, 182, 398, 1, ""},
    {IDOK, defaultButton, false, 243, 189, 50, 14, "OK"},
    {IDCANCEL, button, false, 299, 189, 50, 14, "Abbrechen"},
    {buttonHelp, helpButton, false, 355, 189, 50, 14, "Hi&lfe"},
};
static constexpr ListEntryResource germanEntries[] = {
    {listScaling, "Zentr. Element des Pseudo-Identitätsfilters auf 1"},
    {listScaling, "Betrag des Pseudo-Identitätsfilters auf 1"},
    {listScaling, "Manhattan-Betrag des Pseudo-Identitätsfilters auf 1"},
    {listScaling, "Betrag des pseudo-inversen Filters auf 1"},
    {listScaling, "Keine Skalierung"},
};

static constexpr ControlResource englishControls[] = {
    {0, frame, false, 7, 7, 70, 46, "Execution"},
    {radioPerBlock, radio, true, 14, 19, 56, 10, "&per block"},
    {radioPerPacket, radio, false, 14, 36, 56, 10, "p&er packet"},
    {0, frame, false, 83, 7, 134, 46, "Algorithm direction"},
    {radioConvolution, radio, true, 90, 19, 120, 10, "&Convolution"},
    {radioDeconvolution, radio, false, 90, 36, 120, 10, "&Deconvolution"},
    {0, frame, false, 7, 59, 210, 96, "Mode"},
    {radioTimeDomain, radio, true, 14, 71, 196, 10, "C&alculation in time domain"},
    {radioFrequencyDomain, radio, false, 14, 88, 196, 10, "Ca&lculation in frequency domain"},
    {radioVanCittert, radio, false, 14, 105, 196, 18,
     "&Modified algorithm according to the van\nCittert algorithm"},
    {radioPseudoInverse, radio, false, 14, 130, 196, 18,
     "Dec&onvolusion by the \npseudo-inverse filter"},
    {0, frame, false, 223, 7, 193, 148, "Deconvolusion parameter for van Cittert"},
    {0, label, true, 230, 20, 125, 8, "Co&nvergence parameter :"},
    {editConvergence, edit, false, 359, 17, 50, 14, ""},
    {0, label, true, 230, 37, 125, 8, "Ma&ximum number of iterations :"},
    {editMaxIterations, edit, false, 359, 34, 50, 14, ""},
    {checkAbortAtError, checkBox, false, 230, 71, 125, 10, "A&bort at error value :"},
    {editErrorValue, edit, false, 359, 69, 50, 14, ""},
    {checkAbortAtMinError, checkBox, false, 230, 88, 179, 10, "Abo&rt at minimum error"},
    {0, frame, false, 7, 161, 409, 34, "Deconvolusion parameter by the pseudo-inverse filter"},
    {0, label, true, 14, 177, 142, 8, "&Scaling the pseudo-inverse filter :"},
    {listScaling, dropDown, false, 158, 174, 251, 14, ""},
    {0, line, false, 7, 202, 409, 1, ""},
    {IDOK, defaultButton, false, 254, 210, 50, 14, "OK"},
    {IDCANCEL, button, false, 310, 210, 50, 14, "Cancel"},
    {buttonHelp, helpButton, false, 366, 210, 50, 14, "&Help"},
};
static constexpr ListEntryResource englishEntries[] = {
    {listScaling, "set central element of the pseudo identity filter to 1"},
    {listScaling, "set magnitude of the pseudo identity filter to 1"},
    {listScaling, "set Manhattan-magnitude of the pseudo identity filters to 1"},
    {listScaling, "set magnitude of the pseudo-inverse filters to 1"},
    {listScaling, "no scaling"},
};

static constexpr ControlResource frenchControls[] = {
    {0, frame, false, 7, 7, 70, 46, "Exécution"},
    {radioPerBlock, radio, true, 14, 19, 56, 10, "&par bloc"},
    {radioPerPacket, radio, false, 14, 36, 56, 10, "par pa&quet"},
    {0, frame, false, 83, 7, 134, 46, "Diréction du algorithme "},
    {radioConvolution, radio, true, 90, 19, 120, 10, "&Convolution (pliément)"},
    {radioDeconvolution, radio, false, 90, 36, 120, 10, "&Déconvolution (depliément)"},
    {0, frame, false, 7, 59, 210, 96, "Mode"},
    {radioTimeDomain, radio, true, 14, 71, 196, 10, "Calculation en domain de temp&s"},
    {radioFrequencyDomain, radio, false, 14, 88, 196, 10, "Ca&lculation en domain fréquency "},
    {radioVanCittert, radio, false, 14, 105, 196, 18,
     "Algorithme modi&fié réspective à van\nCittert algorithme"},
    {radioPseudoInverse, radio, false, 14, 130, 196, 18,
     "Déc&onvolusion par le filtre \npseudo-inverse"},
    {0, frame, false, 223, 7, 193, 148, "Paramètres déconvolusion pour van Cittert"},
    {0, label, true, 230, 20, 125, 8, "Paramètres de co&nvérgence:"},
    {editConvergence, edit, false, 359, 17, 50, 14, ""},
    {0, label, true, 230, 37, 125, 8, "Nombre max. des &itérations:"},
    {editMaxIterations, edit, false, 359, 34, 50, 14, ""},
    {checkAbortAtError, checkBox, false, 230, 71, 125, 10, "A&borter à valeur fausse:"},
    {editErrorValue, edit, false, 359, 69, 50, 14, ""},
    {checkAbortAtMinError, checkBox, false, 230, 88, 179, 10, "Abo&rter à valeur fausse min."},
    {0, frame, false, 7, 161, 409, 34, "Paramètres déconvolusion pour le filtre pseudo-inverse"},
    {0, label, true, 14, 177, 144, 8, "&Graduation de filtre pseudo-inverse:"},
    {listScaling, dropDown, false, 162, 174, 247, 14, ""},
    {0, line, false, 7, 202, 409, 1, ""},
    {IDOK, defaultButton, false, 254, 210, 50, 14, "OK"},
    {IDCANCEL, button, false, 310, 210, 50, 14, "Annuler"},
    {buttonHelp, helpButton, false, 366, 210, 50, 14, "&Aide"},
};
static constexpr ListEntryResource frenchEntries[] = {
    {listScaling, "mis l'élément céntrale du filtre pseudo identity à 1"},
    {listScaling, "mis magnitude du filtre pseudo identity à 1"},
    {listScaling, "mis Manhattan-magnitude du filtres pseudo identity à 1"},
    {listScaling, "mis magnitude du filtres pseudo-inverse à 1"},
    {listScaling, "pas de graduation"},
};

static constexpr DialogResource dialogs[] = {
    {dialogSettings, languageGerman, 412, 210, "Fendra", "MS Sans Serif", 8, germanControls,
     germanEntries},
    {dialogSettings, languageEnglish, 423, 231, "Fendra", "MS Sans Serif", 8, englishControls,
     englishEntries},
    {dialogSettings, languageFrench, 423, 231, "Fendra", "MS Sans Serif", 8, frenchControls,
     frenchEntries},
};
constinit const std::span<const DialogResource> moduleDialogs = dialogs;
