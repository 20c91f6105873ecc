<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>ComparisonTab</name>
    <message>
        <source>Plot of the comparison</source>
        <translation>Diagramm des Vergleichs</translation>
    </message>
    <message>
        <source>Table of the comparison</source>
        <translation>Tabelle des Vergleichs</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>Verfahren</translation>
    </message>
    <message>
        <source>Misfit</source>
        <translation>Abweichung</translation>
    </message>
    <message>
        <source>Roughness</source>
        <translation>Rauheit</translation>
    </message>
    <message>
        <source>Remarks</source>
        <translation>Bemerkungen</translation>
    </message>
</context>
<context>
    <name>Figure</name>
    <message>
        <source>Signal</source>
        <translation>Signal</translation>
    </message>
    <message>
        <source>Signals</source>
        <translation>Signale</translation>
    </message>
    <message>
        <source>Signal and result</source>
        <translation>Signal und Ergebnis</translation>
    </message>
    <message>
        <source>Residual: result convolved with the kernel, less signal</source>
        <translation>Residuum: Ergebnis mit dem Kern gefaltet, weniger Signal</translation>
    </message>
    <message>
        <source>Kernel</source>
        <translation>Kern</translation>
    </message>
    <message>
        <source>Spectra</source>
        <translation>Spektren</translation>
    </message>
    <message>
        <source>Choice of the number of steps</source>
        <translation>Wahl der Anzahl der Schritte</translation>
    </message>
    <message>
        <source>Choice of the strength</source>
        <translation>Wahl der Stärke</translation>
    </message>
    <message>
        <source>sample</source>
        <translation>Abtastwert</translation>
    </message>
    <message>
        <source>time (s)</source>
        <translation>Zeit (s)</translation>
    </message>
    <message>
        <source>cycles per sample</source>
        <translation>Perioden je Abtastwert</translation>
    </message>
    <message>
        <source>frequency (Hz)</source>
        <translation>Frequenz (Hz)</translation>
    </message>
    <message>
        <source>magnitude</source>
        <translation>Betrag</translation>
    </message>
    <message>
        <source>value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>steps</source>
        <translation>Schritte</translation>
    </message>
    <message>
        <source>strength</source>
        <translation>Stärke</translation>
    </message>
    <message>
        <source>criterion</source>
        <translation>Kriterium</translation>
    </message>
    <message>
        <source>result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>noise</source>
        <translation>Rauschen</translation>
    </message>
    <message>
        <source>known</source>
        <translation>bekannt</translation>
    </message>
</context>
<context>
    <name>OptionRow</name>
    <message>
        <source>auto</source>
        <translation>auto</translation>
    </message>
    <message>
        <source>%1: automatic</source>
        <translation>%1: automatisch</translation>
    </message>
    <message>
        <source>Leave it to the data</source>
        <translation>Den Daten überlassen</translation>
    </message>
    <message>
        <source>FROM:TO</source>
        <translation>VON:BIS</translation>
    </message>
</context>
<context>
    <name>WorkControls</name>
    <message>
        <source>Open...</source>
        <translation>Öffnen...</translation>
    </message>
    <message>
        <source>%1: open a file</source>
        <translation>%1: Datei öffnen</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>Si&amp;gnal</source>
        <translation>Si&amp;gnal</translation>
    </message>
    <message>
        <source>Kerne&amp;l</source>
        <translation>&amp;Kern</translation>
    </message>
    <message>
        <source>Work</source>
        <translation>Aufgabe</translation>
    </message>
    <message>
        <source>What is done</source>
        <translation>Was geschieht</translation>
    </message>
    <message>
        <source>Deconvolve: remove the kernel</source>
        <translation>Entfalten: Kern entfernen</translation>
    </message>
    <message>
        <source>Convolve with the kernel</source>
        <translation>Mit dem Kern falten</translation>
    </message>
    <message>
        <source>Other options</source>
        <translation>Weitere Optionen</translation>
    </message>
    <message>
        <source>other options, as --columns 2</source>
        <translation>weitere Optionen, etwa --columns 2</translation>
    </message>
    <message>
        <source>Any further options of the command line: columns and axis of text, rate, blocks</source>
        <translation>Alle weiteren Optionen der Befehlszeile: Spalten und Achse von Texten, Rate, Blöcke</translation>
    </message>
</context>
<context>
    <name>WorkOption</name>
    <message>
        <source>&amp;Method</source>
        <translation>Ver&amp;fahren</translation>
    </message>
    <message>
        <source>How the kernel is removed. Automatic: chosen from the data, with all that is not given</source>
        <translation>Wie der Kern entfernt wird. Automatisch: nach den Daten gewählt, mit allem, was nicht gegeben ist</translation>
    </message>
    <message>
        <source>&amp;Domain</source>
        <translation>Be&amp;reich</translation>
    </message>
    <message>
        <source>Whether the convolution is computed in the time or the frequency domain</source>
        <translation>Ob im Zeit- oder im Frequenzbereich gefaltet wird</translation>
    </message>
    <message>
        <source>Step si&amp;ze</source>
        <translation>Schritt&amp;weite</translation>
    </message>
    <message>
        <source>Of the iteration. Automatic: 1 over the kernel&apos;s largest squared gain</source>
        <translation>Der Iteration. Automatisch: 1 durch die größte quadrierte Verstärkung des Kerns</translation>
    </message>
    <message>
        <source>&amp;Iterations</source>
        <translation>&amp;Iterationen</translation>
    </message>
    <message>
        <source>Maximum number of iterations, plus one. Automatic: as many as the noise allows</source>
        <translation>Größte Anzahl der Iterationen, plus eins. Automatisch: so viele, wie das Rauschen erlaubt</translation>
    </message>
    <message>
        <source>Stop at err&amp;or</source>
        <translation>Ende bei Fe&amp;hler</translation>
    </message>
    <message>
        <source>Sum of the squared residuals at or below which the iteration stops</source>
        <translation>Summe der quadrierten Abweichungen, bei der oder unter der die Iteration endet</translation>
    </message>
    <message>
        <source>Stop at minimum</source>
        <translation>Ende beim Minimum</translation>
    </message>
    <message>
        <source>Stop at the first step that raises the error</source>
        <translation>Mit dem ersten Schritt enden, der den Fehler erhöht</translation>
    </message>
    <message>
        <source>Over&amp;sampling</source>
        <translation>Ü&amp;berabtastung</translation>
    </message>
    <message>
        <source>Signal and kernel are interpolated, so that the lag of the time domain does no harm</source>
        <translation>Signal und Kern werden interpoliert, damit die Verspätung des Zeitbereichs nicht schadet</translation>
    </message>
    <message>
        <source>S&amp;caling</source>
        <translation>&amp;Skalierung</translation>
    </message>
    <message>
        <source>What of the inverse filter is scaled to 1</source>
        <translation>Was am inversen Filter auf 1 skaliert wird</translation>
    </message>
    <message>
        <source>S&amp;trength</source>
        <translation>S&amp;tärke</translation>
    </message>
    <message>
        <source>How much is given up to the noise. Automatic: what the data allow</source>
        <translation>Wie viel dem Rauschen geopfert wird. Automatisch: was die Daten erlauben</translation>
    </message>
    <message>
        <source>Or&amp;der</source>
        <translation>Or&amp;dnung</translation>
    </message>
    <message>
        <source>2 keeps the result smooth, 0 keeps it small</source>
        <translation>2 hält das Ergebnis glatt, 0 hält es klein</translation>
    </message>
    <message>
        <source>&amp;Band</source>
        <translation>&amp;Band</translation>
    </message>
    <message>
        <source>FROM:TO in Hz; all outside is suppressed: for a recording of a sweep</source>
        <translation>VON:BIS in Hz; alles außerhalb wird unterdrückt: für die Aufnahme eines Sweeps</translation>
    </message>
    <message>
        <source>&amp;Noise</source>
        <translation>&amp;Rauschen</translation>
    </message>
    <message>
        <source>Standard deviation of a sample. Automatic: estimated</source>
        <translation>Standardabweichung eines Abtastwerts. Automatisch: geschätzt</translation>
    </message>
    <message>
        <source>Noise from</source>
        <translation>Rauschen aus</translation>
    </message>
    <message>
        <source>FROM:TO, a stretch of the signal that is nothing but noise; or drag over it</source>
        <translation>VON:BIS, ein Stück des Signals, das nichts als Rauschen ist; oder darüber ziehen</translation>
    </message>
    <message>
        <source>&amp;Ends</source>
        <translation>&amp;Enden</translation>
    </message>
    <message>
        <source>How the signal goes on beyond its ends</source>
        <translation>Wie das Signal jenseits seiner Enden weitergeht</translation>
    </message>
    <message>
        <source>Origin</source>
        <translation>Nullpunkt</translation>
    </message>
    <message>
        <source>Which sample of the kernel, counted from 0, stands at zero</source>
        <translation>Welcher Abtastwert des Kerns, ab 0 gezählt, bei null steht</translation>
    </message>
    <message>
        <source>&amp;Keep</source>
        <translation>Beha&amp;lten</translation>
    </message>
    <message>
        <source>FROM:TO, the part of the result that is kept, in units of its axis</source>
        <translation>VON:BIS, der Teil des Ergebnisses, der bleibt, in Einheiten seiner Achse</translation>
    </message>
    <message>
        <source>&amp;Append zeros</source>
        <translation>&amp;Nullen anhängen</translation>
    </message>
    <message>
        <source>So that nothing wraps round</source>
        <translation>Damit nichts von hinten nach vorn gelangt</translation>
    </message>
    <message>
        <source>Gain</source>
        <translation>Verstärkung</translation>
    </message>
    <message>
        <source>Of the result, in dB; normalize: to full scale</source>
        <translation>Des Ergebnisses, in dB; normalize: auf Vollaussteuerung</translation>
    </message>
    <message>
        <source>division of spectra</source>
        <translation>Division der Spektren</translation>
    </message>
    <message>
        <source>van Cittert iteration</source>
        <translation>Iteration nach van Cittert</translation>
    </message>
    <message>
        <source>pseudo-inverse filter</source>
        <translation>pseudoinverses Filter</translation>
    </message>
    <message>
        <source>regularised division</source>
        <translation>regularisierte Division</translation>
    </message>
    <message>
        <source>time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>on</source>
        <translation>ein</translation>
    </message>
    <message>
        <source>central element</source>
        <translation>mittleres Element</translation>
    </message>
    <message>
        <source>magnitude</source>
        <translation>Betrag</translation>
    </message>
    <message>
        <source>Manhattan magnitude</source>
        <translation>Manhattan-Betrag</translation>
    </message>
    <message>
        <source>magnitude of the filter</source>
        <translation>Betrag des Filters</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>counts</source>
        <translation>Zählwerte</translation>
    </message>
    <message>
        <source>periodic</source>
        <translation>periodisch</translation>
    </message>
    <message>
        <source>zero</source>
        <translation>null</translation>
    </message>
    <message>
        <source>odd</source>
        <translation>ungerade</translation>
    </message>
    <message>
        <source>bridge</source>
        <translation>Brücke</translation>
    </message>
    <message>
        <source>by its axis</source>
        <translation>nach seiner Achse</translation>
    </message>
    <message>
        <source>its maximum</source>
        <translation>sein Maximum</translation>
    </message>
    <message>
        <source>full scale</source>
        <translation>Vollaussteuerung</translation>
    </message>
</context>
<context>
    <name>WorkPlot</name>
    <message>
        <source>Plot</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>from the mark %1</source>
        <translation>von der Marke %1</translation>
    </message>
</context>
<context>
    <name>WorkWindow</name>
    <message>
        <source>Open a signal</source>
        <translation>Signal öffnen</translation>
    </message>
    <message>
        <source>Open a kernel</source>
        <translation>Kern öffnen</translation>
    </message>
    <message>
        <source>There is no result to save yet.</source>
        <translation>Es gibt noch kein Ergebnis, das zu speichern wäre.</translation>
    </message>
    <message>
        <source>Save the result</source>
        <translation>Ergebnis speichern</translation>
    </message>
    <message>
        <source>Signals (*.csv *.wav *.npy);;All (*)</source>
        <translation>Signale (*.csv *.wav *.npy);;Alle (*)</translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation>Gespeichert als %1</translation>
    </message>
    <message>
        <source>Saved as %1, which has no place for %2</source>
        <translation>Gespeichert als %1, wo kein Platz ist für: %2</translation>
    </message>
    <message>
        <source>Save the picture</source>
        <translation>Bild speichern</translation>
    </message>
    <message>
        <source>Pictures (*.png *.svg *.pdf)</source>
        <translation>Bilder (*.png *.svg *.pdf)</translation>
    </message>
    <message>
        <source>Save the settings as a graph</source>
        <translation>Einstellungen als Graph speichern</translation>
    </message>
    <message>
        <source>Stored graphs (*.graph);;All (*)</source>
        <translation>Gespeicherte Graphen (*.graph);;Alle (*)</translation>
    </message>
    <message>
        <source>%1: a picture is .png, .svg or .pdf; choose another ending</source>
        <translation>%1: ein Bild ist .png, .svg oder .pdf; wählen Sie eine andere Endung</translation>
    </message>
    <message>
        <source>Plot of signal, result and spectra</source>
        <translation>Diagramm von Signal, Ergebnis und Spektren</translation>
    </message>
    <message>
        <source>What the run did</source>
        <translation>Was der Lauf getan hat</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Comparison</source>
        <translation>Vergleich</translation>
    </message>
    <message>
        <source>Command line that gives the same result</source>
        <translation>Befehlszeile, die dasselbe Ergebnis gibt</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Stop the run</source>
        <translation>Den Lauf anhalten</translation>
    </message>
    <message>
        <source>An iteration ends with the estimate so far (Esc)</source>
        <translation>Eine Iteration endet mit der bisherigen Schätzung (Esc)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>Open &amp;signal...</source>
        <translation>&amp;Signal öffnen...</translation>
    </message>
    <message>
        <source>Open &amp;kernel...</source>
        <translation>&amp;Kern öffnen...</translation>
    </message>
    <message>
        <source>&amp;Recent</source>
        <translation>&amp;Zuletzt verwendet</translation>
    </message>
    <message>
        <source>Save &amp;result...</source>
        <translation>&amp;Ergebnis speichern...</translation>
    </message>
    <message>
        <source>Save &amp;picture...</source>
        <translation>&amp;Bild speichern...</translation>
    </message>
    <message>
        <source>Save settings as &amp;graph...</source>
        <translation>Einstellungen als &amp;Graph speichern...</translation>
    </message>
    <message>
        <source>&amp;Copy command line</source>
        <translation>Befehlszeile ko&amp;pieren</translation>
    </message>
    <message>
        <source>The command line is in the clipboard.</source>
        <translation>Die Befehlszeile ist in der Zwischenablage.</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>Be&amp;enden</translation>
    </message>
    <message>
        <source>&amp;Run</source>
        <translation>&amp;Lauf</translation>
    </message>
    <message>
        <source>Run &amp;again</source>
        <translation>&amp;Noch einmal</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>&amp;Anhalten</translation>
    </message>
    <message>
        <source>&amp;Compare all methods</source>
        <translation>Alle Verfahren &amp;vergleichen</translation>
    </message>
    <message>
        <source>&amp;Keep as A</source>
        <translation>Als A &amp;behalten</translation>
    </message>
    <message>
        <source>&amp;Flip A and B</source>
        <translation>A und B &amp;wechseln</translation>
    </message>
    <message>
        <source>&amp;Noise from a quiet stretch</source>
        <translation>&amp;Rauschen aus einem stillen Stück</translation>
    </message>
    <message>
        <source>Drag over a stretch that is nothing but noise</source>
        <translation>Über ein Stück ziehen, das nichts als Rauschen ist</translation>
    </message>
    <message>
        <source>&amp;Module settings...</source>
        <translation>Einstellungen des &amp;Moduls...</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <translation>&amp;Vergrößern</translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>To the &amp;left</source>
        <translation>Nach &amp;links</translation>
    </message>
    <message>
        <source>To the &amp;right</source>
        <translation>Nach &amp;rechts</translation>
    </message>
    <message>
        <source>Show &amp;all</source>
        <translation>&amp;Alles zeigen</translation>
    </message>
    <message>
        <source>&amp;Kernel</source>
        <translation>&amp;Kern</translation>
    </message>
    <message>
        <source>R&amp;esidual</source>
        <translation>&amp;Residuum</translation>
    </message>
    <message>
        <source>&amp;Spectra</source>
        <translation>&amp;Spektren</translation>
    </message>
    <message>
        <source>&amp;Choice of strength</source>
        <translation>&amp;Wahl der Stärke</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>Der Speicher reicht nicht.</translation>
    </message>
    <message>
        <source>SHA-256 of the samples: %1</source>
        <translation>SHA-256 der Abtastwerte: %1</translation>
    </message>
    <message>
        <source>estimate so far</source>
        <translation>bisherige Schätzung</translation>
    </message>
    <message>
        <source>step %1 of at most %2</source>
        <translation>Schritt %1 von höchstens %2</translation>
    </message>
    <message>
        <source>A comparison takes a signal and a kernel: open both.</source>
        <translation>Ein Vergleich braucht ein Signal und einen Kern: öffnen Sie beide.</translation>
    </message>
    <message>
        <source>A: the result that is kept</source>
        <translation>A: das Ergebnis, das behalten wurde</translation>
    </message>
    <message>
        <source>B: the latest result</source>
        <translation>B: das neueste Ergebnis</translation>
    </message>
</context>
</TS>
