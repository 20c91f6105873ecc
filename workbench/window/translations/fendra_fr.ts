<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>ComparisonTab</name>
    <message>
        <source>Plot of the comparison</source>
        <translation>Graphique de la comparaison</translation>
    </message>
    <message>
        <source>Table of the comparison</source>
        <translation>Tableau de la comparaison</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>Méthode</translation>
    </message>
    <message>
        <source>Misfit</source>
        <translation>Écart</translation>
    </message>
    <message>
        <source>Roughness</source>
        <translation>Rugosité</translation>
    </message>
    <message>
        <source>Remarks</source>
        <translation>Remarques</translation>
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
        <translation>Signaux</translation>
    </message>
    <message>
        <source>Signal and result</source>
        <translation>Signal et résultat</translation>
    </message>
    <message>
        <source>Residual: result convolved with the kernel, less signal</source>
        <translation>Résidu : résultat convolué avec le noyau, moins le signal</translation>
    </message>
    <message>
        <source>Kernel</source>
        <translation>Noyau</translation>
    </message>
    <message>
        <source>Spectra</source>
        <translation>Spectres</translation>
    </message>
    <message>
        <source>Choice of the number of steps</source>
        <translation>Choix du nombre de pas</translation>
    </message>
    <message>
        <source>Choice of the strength</source>
        <translation>Choix de l&apos;intensité</translation>
    </message>
    <message>
        <source>sample</source>
        <translation>échantillon</translation>
    </message>
    <message>
        <source>time (s)</source>
        <translation>temps (s)</translation>
    </message>
    <message>
        <source>cycles per sample</source>
        <translation>périodes par échantillon</translation>
    </message>
    <message>
        <source>frequency (Hz)</source>
        <translation>fréquence (Hz)</translation>
    </message>
    <message>
        <source>magnitude</source>
        <translation>amplitude</translation>
    </message>
    <message>
        <source>value</source>
        <translation>valeur</translation>
    </message>
    <message>
        <source>steps</source>
        <translation>pas</translation>
    </message>
    <message>
        <source>strength</source>
        <translation>intensité</translation>
    </message>
    <message>
        <source>criterion</source>
        <translation>critère</translation>
    </message>
    <message>
        <source>result</source>
        <translation>résultat</translation>
    </message>
    <message>
        <source>noise</source>
        <translation>bruit</translation>
    </message>
    <message>
        <source>known</source>
        <translation>connu</translation>
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
        <translation>%1 : automatique</translation>
    </message>
    <message>
        <source>Leave it to the data</source>
        <translation>Laisser les données décider</translation>
    </message>
    <message>
        <source>FROM:TO</source>
        <translation>DE:À</translation>
    </message>
</context>
<context>
    <name>WorkControls</name>
    <message>
        <source>Open...</source>
        <translation>Ouvrir...</translation>
    </message>
    <message>
        <source>%1: open a file</source>
        <translation>%1 : ouvrir un fichier</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Fichiers</translation>
    </message>
    <message>
        <source>Si&amp;gnal</source>
        <translation>Si&amp;gnal</translation>
    </message>
    <message>
        <source>Kerne&amp;l</source>
        <translation>&amp;Noyau</translation>
    </message>
    <message>
        <source>Work</source>
        <translation>Travail</translation>
    </message>
    <message>
        <source>What is done</source>
        <translation>Ce qui est fait</translation>
    </message>
    <message>
        <source>Deconvolve: remove the kernel</source>
        <translation>Déconvoluer : retirer le noyau</translation>
    </message>
    <message>
        <source>Convolve with the kernel</source>
        <translation>Convoluer avec le noyau</translation>
    </message>
    <message>
        <source>Other options</source>
        <translation>Autres options</translation>
    </message>
    <message>
        <source>other options, as --columns 2</source>
        <translation>autres options, comme --columns 2</translation>
    </message>
    <message>
        <source>Any further options of the command line: columns and axis of text, rate, blocks</source>
        <translation>Toute autre option de la ligne de commande : colonnes et axe des textes, fréquence, blocs</translation>
    </message>
</context>
<context>
    <name>WorkOption</name>
    <message>
        <source>&amp;Method</source>
        <translation>&amp;Méthode</translation>
    </message>
    <message>
        <source>How the kernel is removed. Automatic: chosen from the data, with all that is not given</source>
        <translation>Comment le noyau est retiré. Automatique : choisi d&apos;après les données, avec tout ce qui n&apos;est pas donné</translation>
    </message>
    <message>
        <source>&amp;Domain</source>
        <translation>&amp;Domaine</translation>
    </message>
    <message>
        <source>Whether the convolution is computed in the time or the frequency domain</source>
        <translation>Si la convolution est calculée en temps ou en fréquence</translation>
    </message>
    <message>
        <source>Step si&amp;ze</source>
        <translation>Pa&amp;s</translation>
    </message>
    <message>
        <source>Of the iteration. Automatic: 1 over the kernel&apos;s largest squared gain</source>
        <translation>De l&apos;itération. Automatique : 1 sur le plus grand gain au carré du noyau</translation>
    </message>
    <message>
        <source>&amp;Iterations</source>
        <translation>&amp;Itérations</translation>
    </message>
    <message>
        <source>Maximum number of iterations, plus one. Automatic: as many as the noise allows</source>
        <translation>Nombre maximal d&apos;itérations, plus un. Automatique : autant que le bruit le permet</translation>
    </message>
    <message>
        <source>Stop at err&amp;or</source>
        <translation>Arrêt à l&apos;err&amp;eur</translation>
    </message>
    <message>
        <source>Sum of the squared residuals at or below which the iteration stops</source>
        <translation>Somme des résidus au carré à laquelle, ou sous laquelle, l&apos;itération s&apos;arrête</translation>
    </message>
    <message>
        <source>Stop at minimum</source>
        <translation>Arrêt au minimum</translation>
    </message>
    <message>
        <source>Stop at the first step that raises the error</source>
        <translation>S&apos;arrêter au premier pas qui augmente l&apos;erreur</translation>
    </message>
    <message>
        <source>Over&amp;sampling</source>
        <translation>S&amp;uréchantillonnage</translation>
    </message>
    <message>
        <source>Signal and kernel are interpolated, so that the lag of the time domain does no harm</source>
        <translation>Signal et noyau sont interpolés, pour que le retard du domaine temporel ne nuise pas</translation>
    </message>
    <message>
        <source>S&amp;caling</source>
        <translation>É&amp;chelle</translation>
    </message>
    <message>
        <source>What of the inverse filter is scaled to 1</source>
        <translation>Ce qui, du filtre inverse, est mis à l&apos;échelle 1</translation>
    </message>
    <message>
        <source>S&amp;trength</source>
        <translation>In&amp;tensité</translation>
    </message>
    <message>
        <source>How much is given up to the noise. Automatic: what the data allow</source>
        <translation>Ce qui est abandonné au bruit. Automatique : ce que permettent les données</translation>
    </message>
    <message>
        <source>Or&amp;der</source>
        <translation>Or&amp;dre</translation>
    </message>
    <message>
        <source>2 keeps the result smooth, 0 keeps it small</source>
        <translation>2 garde le résultat lisse, 0 le garde petit</translation>
    </message>
    <message>
        <source>&amp;Band</source>
        <translation>Bande</translation>
    </message>
    <message>
        <source>FROM:TO in Hz; all outside is suppressed: for a recording of a sweep</source>
        <translation>DE:À en Hz ; tout ce qui est en dehors est supprimé : pour l&apos;enregistrement d&apos;un balayage</translation>
    </message>
    <message>
        <source>&amp;Noise</source>
        <translation>&amp;Bruit</translation>
    </message>
    <message>
        <source>Standard deviation of a sample. Automatic: estimated</source>
        <translation>Écart type d&apos;un échantillon. Automatique : estimé</translation>
    </message>
    <message>
        <source>Noise from</source>
        <translation>Bruit de</translation>
    </message>
    <message>
        <source>FROM:TO, a stretch of the signal that is nothing but noise; or drag over it</source>
        <translation>DE:À, une partie du signal qui n&apos;est que du bruit ; ou glissez dessus</translation>
    </message>
    <message>
        <source>&amp;Ends</source>
        <translation>Extrémités</translation>
    </message>
    <message>
        <source>How the signal goes on beyond its ends</source>
        <translation>Comment le signal continue au-delà de ses extrémités</translation>
    </message>
    <message>
        <source>Origin</source>
        <translation>Origine</translation>
    </message>
    <message>
        <source>Which sample of the kernel, counted from 0, stands at zero</source>
        <translation>Quel échantillon du noyau, compté à partir de 0, est au zéro</translation>
    </message>
    <message>
        <source>&amp;Keep</source>
        <translation>Garde&amp;r</translation>
    </message>
    <message>
        <source>FROM:TO, the part of the result that is kept, in units of its axis</source>
        <translation>DE:À, la partie du résultat qui est gardée, dans les unités de son axe</translation>
    </message>
    <message>
        <source>&amp;Append zeros</source>
        <translation>&amp;Ajouter des zéros</translation>
    </message>
    <message>
        <source>So that nothing wraps round</source>
        <translation>Pour que rien ne revienne au début</translation>
    </message>
    <message>
        <source>Gain</source>
        <translation>Gain</translation>
    </message>
    <message>
        <source>Of the result, in dB; normalize: to full scale</source>
        <translation>Du résultat, en dB ; normalize : à pleine échelle</translation>
    </message>
    <message>
        <source>division of spectra</source>
        <translation>division des spectres</translation>
    </message>
    <message>
        <source>van Cittert iteration</source>
        <translation>itération de van Cittert</translation>
    </message>
    <message>
        <source>pseudo-inverse filter</source>
        <translation>filtre pseudo-inverse</translation>
    </message>
    <message>
        <source>regularised division</source>
        <translation>division régularisée</translation>
    </message>
    <message>
        <source>time</source>
        <translation>temps</translation>
    </message>
    <message>
        <source>frequency</source>
        <translation>fréquence</translation>
    </message>
    <message>
        <source>off</source>
        <translation>non</translation>
    </message>
    <message>
        <source>on</source>
        <translation>oui</translation>
    </message>
    <message>
        <source>central element</source>
        <translation>élément central</translation>
    </message>
    <message>
        <source>magnitude</source>
        <translation>amplitude</translation>
    </message>
    <message>
        <source>Manhattan magnitude</source>
        <translation>norme de Manhattan</translation>
    </message>
    <message>
        <source>magnitude of the filter</source>
        <translation>norme du filtre</translation>
    </message>
    <message>
        <source>none</source>
        <translation>aucun</translation>
    </message>
    <message>
        <source>counts</source>
        <translation>comptages</translation>
    </message>
    <message>
        <source>periodic</source>
        <translation>périodiques</translation>
    </message>
    <message>
        <source>zero</source>
        <translation>nulles</translation>
    </message>
    <message>
        <source>odd</source>
        <translation>impaires</translation>
    </message>
    <message>
        <source>bridge</source>
        <translation>pont</translation>
    </message>
    <message>
        <source>by its axis</source>
        <translation>selon son axe</translation>
    </message>
    <message>
        <source>its maximum</source>
        <translation>son maximum</translation>
    </message>
    <message>
        <source>full scale</source>
        <translation>pleine échelle</translation>
    </message>
</context>
<context>
    <name>WorkPlot</name>
    <message>
        <source>Plot</source>
        <translation>Graphique</translation>
    </message>
    <message>
        <source>from the mark %1</source>
        <translation>depuis la marque %1</translation>
    </message>
</context>
<context>
    <name>WorkWindow</name>
    <message>
        <source>Open a signal</source>
        <translation>Ouvrir un signal</translation>
    </message>
    <message>
        <source>Open a kernel</source>
        <translation>Ouvrir un noyau</translation>
    </message>
    <message>
        <source>There is no result to save yet.</source>
        <translation>Il n&apos;y a pas encore de résultat à enregistrer.</translation>
    </message>
    <message>
        <source>Save the result</source>
        <translation>Enregistrer le résultat</translation>
    </message>
    <message>
        <source>Signals (*.csv *.wav *.npy);;All (*)</source>
        <translation>Signaux (*.csv *.wav *.npy);;Tous (*)</translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation>Enregistré sous %1</translation>
    </message>
    <message>
        <source>Saved as %1, which has no place for %2</source>
        <translation>Enregistré sous %1, qui n&apos;a pas de place pour : %2</translation>
    </message>
    <message>
        <source>Save the picture</source>
        <translation>Enregistrer l&apos;image</translation>
    </message>
    <message>
        <source>Pictures (*.png *.svg *.pdf)</source>
        <translation>Images (*.png *.svg *.pdf)</translation>
    </message>
    <message>
        <source>Save the settings as a graph</source>
        <translation>Enregistrer les réglages comme graphe</translation>
    </message>
    <message>
        <source>Stored graphs (*.graph);;All (*)</source>
        <translation>Graphes enregistrés (*.graph);;Tous (*)</translation>
    </message>
    <message>
        <source>%1: a picture is .png, .svg or .pdf; choose another ending</source>
        <translation>%1 : une image est .png, .svg ou .pdf ; choisissez une autre extension</translation>
    </message>
    <message>
        <source>Plot of signal, result and spectra</source>
        <translation>Graphique du signal, du résultat et des spectres</translation>
    </message>
    <message>
        <source>What the run did</source>
        <translation>Ce que l&apos;exécution a fait</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Résultat</translation>
    </message>
    <message>
        <source>Comparison</source>
        <translation>Comparaison</translation>
    </message>
    <message>
        <source>Command line that gives the same result</source>
        <translation>Ligne de commande qui donne le même résultat</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progression</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Stop the run</source>
        <translation>Arrêter l&apos;exécution</translation>
    </message>
    <message>
        <source>An iteration ends with the estimate so far (Esc)</source>
        <translation>Une itération s&apos;arrête avec l&apos;estimation courante (Échap)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>Open &amp;signal...</source>
        <translation>Ouvrir un &amp;signal...</translation>
    </message>
    <message>
        <source>Open &amp;kernel...</source>
        <translation>Ouvrir un &amp;noyau...</translation>
    </message>
    <message>
        <source>&amp;Recent</source>
        <translation>&amp;Récents</translation>
    </message>
    <message>
        <source>Save &amp;result...</source>
        <translation>Enregistrer le &amp;résultat...</translation>
    </message>
    <message>
        <source>Save &amp;picture...</source>
        <translation>Enregistrer l&apos;&amp;image...</translation>
    </message>
    <message>
        <source>Save settings as &amp;graph...</source>
        <translation>Enregistrer les réglages comme &amp;graphe...</translation>
    </message>
    <message>
        <source>&amp;Copy command line</source>
        <translation>&amp;Copier la ligne de commande</translation>
    </message>
    <message>
        <source>The command line is in the clipboard.</source>
        <translation>La ligne de commande est dans le presse-papiers.</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>&amp;Run</source>
        <translation>E&amp;xécution</translation>
    </message>
    <message>
        <source>Run &amp;again</source>
        <translation>Exécuter à &amp;nouveau</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>&amp;Arrêter</translation>
    </message>
    <message>
        <source>&amp;Compare all methods</source>
        <translation>&amp;Comparer toutes les méthodes</translation>
    </message>
    <message>
        <source>&amp;Keep as A</source>
        <translation>&amp;Garder comme A</translation>
    </message>
    <message>
        <source>&amp;Flip A and B</source>
        <translation>&amp;Basculer entre A et B</translation>
    </message>
    <message>
        <source>&amp;Noise from a quiet stretch</source>
        <translation>&amp;Bruit d&apos;une partie calme</translation>
    </message>
    <message>
        <source>Drag over a stretch that is nothing but noise</source>
        <translation>Glissez sur une partie qui n&apos;est que du bruit</translation>
    </message>
    <message>
        <source>&amp;Module settings...</source>
        <translation>Réglages du &amp;module...</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Affichage</translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <translation>&amp;Agrandir</translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <translation>&amp;Réduire</translation>
    </message>
    <message>
        <source>To the &amp;left</source>
        <translation>Vers la &amp;gauche</translation>
    </message>
    <message>
        <source>To the &amp;right</source>
        <translation>Vers la &amp;droite</translation>
    </message>
    <message>
        <source>Show &amp;all</source>
        <translation>&amp;Tout afficher</translation>
    </message>
    <message>
        <source>&amp;Kernel</source>
        <translation>&amp;Noyau</translation>
    </message>
    <message>
        <source>R&amp;esidual</source>
        <translation>R&amp;ésidu</translation>
    </message>
    <message>
        <source>&amp;Spectra</source>
        <translation>&amp;Spectres</translation>
    </message>
    <message>
        <source>&amp;Choice of strength</source>
        <translation>&amp;Choix de l&apos;intensité</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>La mémoire ne suffit pas.</translation>
    </message>
    <message>
        <source>SHA-256 of the samples: %1</source>
        <translation>SHA-256 des échantillons : %1</translation>
    </message>
    <message>
        <source>estimate so far</source>
        <translation>estimation courante</translation>
    </message>
    <message>
        <source>step %1 of at most %2</source>
        <translation>pas %1 sur au plus %2</translation>
    </message>
    <message>
        <source>A comparison takes a signal and a kernel: open both.</source>
        <translation>Une comparaison demande un signal et un noyau : ouvrez les deux.</translation>
    </message>
    <message>
        <source>A: the result that is kept</source>
        <translation>A : le résultat gardé</translation>
    </message>
    <message>
        <source>B: the latest result</source>
        <translation>B : le dernier résultat</translation>
    </message>
</context>
</TS>
