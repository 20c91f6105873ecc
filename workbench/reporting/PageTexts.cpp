#include "workbench/reporting/PageTexts.h"

#include <cstddef>

static std::vector<PageTextRow> sentences() {
    using T = PageText;
    return {
        {T::language, "en", "de", "fr"},
        {T::deconvolution, "Deconvolution of {0} by {1}", "Entfaltung von {0} mit {1}",
         "Déconvolution de {0} par {1}"},
        {T::comparison, "Methods compared: {0}, deconvolved by {1}",
         "Verfahren im Vergleich: {0}, entfaltet mit {1}",
         "Comparaison des méthodes : {0}, déconvolué par {1}"},
        {T::sweep, "Exponential sweep {0}", "Exponentieller Gleitsinus {0}",
         "Balayage sinusoïdal exponentiel {0}"},
        {T::remarks, "Remarks", "Bemerkungen", "Remarques"},
        {T::stopped, "The run was stopped; the result is the estimate so far.",
         "Der Lauf wurde angehalten; das Ergebnis ist die bis dahin erreichte Schätzung.",
         "Le calcul a été arrêté ; le résultat est l'estimation obtenue jusque-là."},
        {T::pictures, "Pictures", "Bilder", "Figures"},
        {T::pointer,
         "Point at a picture to read its values. With the keyboard: select it with Tab, move with "
         "the left and right arrow keys (with Shift: ten times as far), and change the pane with "
         "the up and down arrow keys.",
         "Wer auf ein Bild zeigt, liest die Werte ab. Mit der Tastatur: Tab wählt das Bild, die "
         "Pfeiltasten nach links und rechts bewegen den Zeiger (mit Umschalt zehnmal so weit), die "
         "nach oben und unten wechseln das Feld.",
         "Pointez une figure pour lire ses valeurs. Au clavier : Tab sélectionne la figure, les "
         "flèches gauche et droite déplacent le curseur (dix fois plus loin avec Maj), les flèches "
         "haut et bas changent de cadre."},
        {T::chosen, "What was chosen, and why", "Was gewählt wurde, und warum",
         "Ce qui a été choisi, et pourquoi"},
        {T::worth, "What the result is worth", "Was das Ergebnis wert ist",
         "Ce que vaut le résultat"},
        {T::methods, "Methods", "Verfahren", "Méthodes"},
        {T::methodsNote,
         "The misfit is how far the result, convolved with the kernel, is from the signal; the "
         "roughness, how much neighbouring samples differ; the error, how far the result is from "
         "the known signal: each a root mean square over that of the signal compared with.",
         "Die Abweichung sagt, wie weit das Ergebnis, mit dem Kern gefaltet, vom Signal entfernt "
         "ist; die Rauheit, wie sehr sich benachbarte Abtastwerte unterscheiden; der Fehler, wie "
         "weit das Ergebnis vom bekannten Signal entfernt ist: jeweils als Effektivwert, bezogen "
         "auf den des verglichenen Signals.",
         "L'écart indique à quelle distance du signal se trouve le résultat convolué par le "
         "noyau ; la rugosité, combien diffèrent des échantillons voisins ; l'erreur, à quelle "
         "distance du signal connu se trouve le résultat : chacun en valeur efficace, rapportée à "
         "celle du signal de comparaison."},
        {T::methodNumbers, "Numbers of the method", "Zahlen des Verfahrens",
         "Nombres de la méthode"},
        {T::result, "Result", "Ergebnis", "Résultat"},
        {T::settings, "Settings", "Einstellungen", "Réglages"},
        {T::files, "Files", "Dateien", "Fichiers"},
        {T::again, "To get the same again", "Um dasselbe noch einmal zu bekommen",
         "Pour obtenir de nouveau le même résultat"},
        {T::withoutSearch, "The same, with what was found in place of the search:",
         "Dasselbe, mit dem Gefundenen anstelle der Suche:",
         "De même, avec ce qui a été trouvé au lieu de la recherche :"},
        {T::withoutStop,
         "The same, without a stop:", "Dasselbe, ohne Anhalten:", "De même, sans arrêt :"},
        {T::more, "Rows not shown: {0}", "Nicht gezeigte Zeilen: {0}", "Lignes non montrées : {0}"},
        {T::complete, "This page is complete: it loads nothing from elsewhere.",
         "Diese Seite ist vollständig: Sie lädt nichts von anderswo.",
         "Cette page est complète : elle ne charge rien d'ailleurs."}};
}

static std::vector<PageTextRow> labelsOfSignals() {
    using T = PageText;
    return {{T::signal, "Signal", "Signal", "Signal"},
            {T::kernel, "Kernel", "Kern", "Noyau"},
            {T::file, "File", "Datei", "Fichier"},
            {T::format, "Format", "Format", "Format"},
            {T::samples, "Samples", "Abtastwerte", "Échantillons"},
            {T::channels, "Channels", "Kanäle", "Voies"},
            {T::channel, "Channel", "Kanal", "Voie"},
            {T::rate, "Sampling rate (Hz)", "Abtastrate (Hz)", "Fréquence d'échantillonnage (Hz)"},
            {T::block, "Block", "Block", "Bloc"},
            {T::wholeSignal, "whole signal", "ganzes Signal", "signal entier"},
            {T::lowest, "Smallest value", "Kleinster Wert", "Plus petite valeur"},
            {T::highest, "Largest value", "Größter Wert", "Plus grande valeur"},
            {T::fileDigest, "SHA-256 of the file", "SHA-256 der Datei", "SHA-256 du fichier"},
            {T::sampleDigest, "SHA-256 of the samples, as 64-bit little-endian floats",
             "SHA-256 der Abtastwerte als 64-Bit-Gleitkommazahlen (Little Endian)",
             "SHA-256 des échantillons en flottants de 64 bits, petit-boutistes"}};
}

static std::vector<PageTextRow> labelsOfRuns() {
    using T = PageText;
    return {
        {T::method, "Method", "Verfahren", "Méthode"},
        {T::module, "Module", "Modul", "Module"},
        {T::padded, "Zeros appended", "Nullen angehängt", "Zéros ajoutés"},
        {T::yes, "yes", "ja", "oui"},
        {T::rule, "Rule of the choice", "Regel der Wahl", "Règle du choix"},
        {T::steps, "Steps of the iteration", "Schritte der Iteration", "Pas de l'itération"},
        {T::strength, "Strength", "Stärke", "Intensité"},
        {T::convergence, "Step size", "Schrittweite", "Taille du pas"},
        {T::oversampling, "Oversampling", "Überabtastung", "Suréchantillonnage"},
        {T::explained, "Energy of the signal explained (%)", "Erklärte Energie des Signals (%)",
         "Énergie du signal expliquée (%)"},
        {T::kept, "Degrees of freedom kept", "Behaltene Freiheitsgrade",
         "Degrés de liberté conservés"},
        {T::noise, "Noise (standard deviation)", "Rauschen (Standardabweichung)",
         "Bruit (écart type)"},
        {T::noiseAtMost, "Noise (standard deviation), at most",
         "Rauschen (Standardabweichung), höchstens", "Bruit (écart type), au plus"},
        {T::whiteness, "Residual: distance from white noise (white up to 2)",
         "Residuum: Abstand von weißem Rauschen (weiß bis 2)",
         "Résidu : écart au bruit blanc (blanc jusqu'à 2)"},
        {T::predictedError, "Last error, as predicted", "Letzter Fehler, vorhergesagt",
         "Dernière erreur, prédite"},
        {T::band, "Band on either side (95 %)", "Band zu beiden Seiten (95 %)",
         "Bande de part et d'autre (95 %)"},
        {T::resolution, "Resolution (samples)", "Auflösung (Abtastwerte)",
         "Résolution (échantillons)"},
        {T::gain, "Gain (dB)", "Verstärkung (dB)", "Gain (dB)"},
        {T::peak, "Peak", "Spitze", "Crête"},
        {T::peakSample, "Sample of the peak", "Abtastwert der Spitze", "Échantillon de la crête"},
        {T::aboveNoise, "Above the noise (dB)", "Über dem Rauschen (dB)",
         "Au-dessus du bruit (dB)"},
        {T::quietest, "Noise where it is quietest", "Rauschen, wo es am leisesten ist",
         "Bruit là où il est le plus faible"},
        {T::truth, "Known signal", "Bekanntes Signal", "Signal connu"},
        {T::error, "Relative error", "Relativer Fehler", "Erreur relative"},
        {T::compared, "Samples compared", "Verglichene Abtastwerte", "Échantillons comparés"},
        {T::misfit, "Misfit", "Abweichung", "Écart"},
        {T::roughness, "Roughness", "Rauheit", "Rugosité"},
        {T::reported, "Reported", "Gemeldet", "Signalé"},
        {T::frequencies, "First and last frequency (Hz)", "Erste und letzte Frequenz (Hz)",
         "Première et dernière fréquence (Hz)"},
        {T::seconds, "Duration (s)", "Dauer (s)", "Durée (s)"},
        {T::fade, "Fading in and out (s)", "Ein- und Ausblenden (s)", "Fondus (s)"}};
}

const std::vector<PageTextRow>& pageTexts() {
    static const std::vector<PageTextRow> table = [] {
        std::vector<PageTextRow> rows = sentences();
        for (const std::vector<PageTextRow>& more : {labelsOfSignals(), labelsOfRuns()}) {
            rows.insert(rows.end(), more.begin(), more.end());
        }
        return rows;
    }();
    return table;
}

std::string_view pageText(PageText text, PageLanguage language) {
    const PageTextRow& row = pageTexts().at(static_cast<std::size_t>(text));
    switch (language) {
        case PageLanguage::german:
            return row.german;
        case PageLanguage::french:
            return row.french;
        default:
            return row.english;
    }
}
