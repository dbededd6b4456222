<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_GB">
<context>
    <name>Texts</name>
    <message>
        <source>no site has a measured line</source>
        <translation>keinem Platz ist eine gemessene Linie zugeordnet</translation>
    </message>
    <message>
        <source>%1 has %2 atoms, but %3 has %4</source>
        <translation>%1 hat %2 Atome, %3 dagegen %4</translation>
    </message>
    <message>
        <source>only one of %1 and %2 has a lattice</source>
        <translation>nur eine der Dateien %1 und %2 hat ein Gitter</translation>
    </message>
    <message>
        <source>atom %1 is %2 in %3, but %4 in %5</source>
        <translation>Atom %1 ist %2 in %3, aber %4 in %5</translation>
    </message>
    <message>
        <source>only one of %1 and %2 has a shielding of %3</source>
        <translation>nur eine der Dateien %1 und %2 hat eine Abschirmung von %3</translation>
    </message>
    <message>
        <source>only one of %1 and %2 has an electric field gradient of %3</source>
        <translation>nur eine der Dateien %1 und %2 hat einen elektrischen Feldgradienten von %3</translation>
    </message>
    <message>
        <source>there is no cross peak to compare</source>
        <translation>es gibt keinen Kreuzpeak zum Vergleichen</translation>
    </message>
    <message>
        <source>%1 cross peaks were measured, but the structure has only %2</source>
        <translation>%1 Kreuzpeaks wurden gemessen, die Struktur hat aber nur %2</translation>
    </message>
    <message>
        <source>the lines stand for %1 nuclei together, into which the %2 of the sites do not go evenly</source>
        <translation>die Linien stehen zusammen für %1 Kerne, in denen die %2 der Plätze nicht glatt aufgehen</translation>
    </message>
    <message>
        <source>the sites have too many different numbers of nuclei to be shared out by counts</source>
        <translation>die Plätze haben zu viele verschiedene Kernzahlen, um nach Anzahlen aufgeteilt zu werden</translation>
    </message>
    <message>
        <source>the sites, with the numbers of nuclei that they have, cannot be shared out to lines of these counts</source>
        <translation>die Plätze mit ihren Kernzahlen lassen sich nicht auf Linien mit diesen Anzahlen aufteilen</translation>
    </message>
    <message>
        <source>the line at %1 ppm is assigned to &quot;%2&quot;, but the structure has no such site of this nucleus</source>
        <translation>die Linie bei %1 ppm ist „%2“ zugeordnet, die Struktur hat aber keinen solchen Platz dieses Kerns</translation>
    </message>
    <message>
        <source>no line was measured</source>
        <translation>es wurde keine Linie gemessen</translation>
    </message>
    <message>
        <source>a calibration takes at least three sites, and there are %1</source>
        <translation>eine Kalibrierung braucht mindestens drei Plätze, es sind %1</translation>
    </message>
    <message>
        <source>all shieldings are the same: they tell no slope</source>
        <translation>alle Abschirmungen sind gleich: daraus folgt keine Steigung</translation>
    </message>
    <message>
        <source>with more than %1 atoms the space group is not looked for: every atom counts as a site of its own</source>
        <translation>bei mehr als %1 Atomen wird die Raumgruppe nicht gesucht: jedes Atom zählt als eigener Platz</translation>
    </message>
    <message>
        <source>the space group could not be found (atoms too close to each other?): every atom counts as a site of its own</source>
        <translation>die Raumgruppe war nicht zu finden (Atome zu nahe beieinander?): jedes Atom zählt als eigener Platz</translation>
    </message>
    <message>
        <source>%1 and %2 are equivalent by symmetry (%3), but their isotropic shieldings are %4 and %5 ppm: they count as different sites</source>
        <translation>%1 und %2 sind durch Symmetrie äquivalent (%3), ihre isotropen Abschirmungen aber %4 und %5 ppm: sie zählen als verschiedene Plätze</translation>
    </message>
    <message>
        <source>there is no site of %1</source>
        <translation>es gibt keinen Platz von %1</translation>
    </message>
    <message>
        <source>the gyromagnetic ratio of %1 is not known here: its dipole couplings are missing</source>
        <translation>das gyromagnetische Verhältnis von %1 ist hier nicht bekannt: seine Dipolkopplungen fehlen</translation>
    </message>
    <message>
        <source>there is no atom %1 of the nuclei %2</source>
        <translation>es gibt kein Atom %1 der Kerne %2</translation>
    </message>
    <message>
        <source>%1 sites are more than the %2 that a spin system may have; choose some of the atoms</source>
        <translation>%1 Plätze sind mehr als die %2, die ein Spinsystem haben kann; wählen Sie einige der Atome aus</translation>
    </message>
    <message>
        <source>%1 has no shielding: its shift is missing</source>
        <translation>%1 hat keine Abschirmung: seine chemische Verschiebung fehlt</translation>
    </message>
    <message>
        <source>%1 has no electric field gradient: its quadrupole coupling is missing</source>
        <translation>%1 hat keinen elektrischen Feldgradienten: seine Quadrupolkopplung fehlt</translation>
    </message>
    <message>
        <source>option %1 is given %2 times</source>
        <translation>Option %1 ist %2-mal angegeben</translation>
    </message>
    <message>
        <source>option %1 has an empty value</source>
        <translation>Option %1 hat einen leeren Wert</translation>
    </message>
    <message>
        <source>Usage: %1

%2
%3

Options:
%4%5</source>
        <translation>Aufruf: %1

%2
%3

Optionen:
%4%5</translation>
    </message>
    <message>
        <source>FILE is missing</source>
        <translation>FILE fehlt</translation>
    </message>
    <message>
        <source>expected one FILE, found &quot;%1&quot; as well</source>
        <translation>eine Datei (FILE) wurde erwartet, es steht auch „%1“ da</translation>
    </message>
    <message>
        <source>
Usage: %1
See magres-workbench %2 --help</source>
        <translation>
Aufruf: %1
Mehr dazu mit magres-workbench %2 --help</translation>
    </message>
    <message>
        <source>magres-workbench: plug-in %1 is not loaded: %2
</source>
        <translation>magres-workbench: Plug-in %1 ist nicht geladen: %2
</translation>
    </message>
    <message>
        <source>option %1 is required</source>
        <translation>Option %1 ist nötig</translation>
    </message>
    <message>
        <source>standard output cannot be written</source>
        <translation>in die Standardausgabe kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>Line width: %1
</source>
        <translation>Linienbreite: %1
</translation>
    </message>
    <message>
        <source>%1: there is no such file</source>
        <translation>%1: diese Datei gibt es nicht</translation>
    </message>
    <message>
        <source>option %1: &quot;%2&quot; is not %3</source>
        <translation>Option %1: „%2“ ist nicht %3</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>eine Zahl</translation>
    </message>
    <message>
        <source>a number above 0</source>
        <translation>eine Zahl über 0</translation>
    </message>
    <message>
        <source>a range FROM:TO of two different numbers in ppm, such as 200:-20</source>
        <translation>ein Bereich FROM:TO aus zwei verschiedenen Zahlen in ppm wie 200:-20</translation>
    </message>
    <message>
        <source>one of the point counts %1</source>
        <translation>eine der Punktzahlen %1</translation>
    </message>
    <message>
        <source>of the form El=NUC, such as O=17O</source>
        <translation>von der Form El=NUC wie O=17O</translation>
    </message>
    <message>
        <source>one of: %1</source>
        <translation>eines von: %1</translation>
    </message>
    <message>
        <source>a nucleus such as 13C</source>
        <translation>ein Kern wie 13C</translation>
    </message>
    <message>
        <source>option -o: the suffix of &quot;%1&quot; is not one of: %2</source>
        <translation>Option -o: die Endung von „%1“ ist keine von: %2</translation>
    </message>
    <message>
        <source>option -o: &quot;%1&quot; is given twice</source>
        <translation>Option -o: „%1“ ist zweimal angegeben</translation>
    </message>
    <message>
        <source>a temporary directory cannot be made in %1: %2</source>
        <translation>in %1 kann kein temporäres Verzeichnis angelegt werden: %2</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is given twice</source>
        <translation>„%1“ ist zweimal angegeben</translation>
    </message>
    <message>
        <source>option --format: &quot;%1&quot; is not one of: text, csv, json</source>
        <translation>Option --format: „%1“ ist keines von: text, csv, json</translation>
    </message>
    <message>
        <source>magres-workbench rank: %1 of %2 files failed
</source>
        <translation>magres-workbench rank: %1 von %2 Dateien sind fehlgeschlagen
</translation>
    </message>
    <message>
        <source>option %1 means nothing with --merge</source>
        <translation>Option %1 hat zusammen mit --merge keinen Sinn</translation>
    </message>
    <message>
        <source>no plug-in with a file filter is loaded</source>
        <translation>es ist kein Plug-in mit einem Dateifilter geladen</translation>
    </message>
    <message>
        <source>the plug-in&apos;s report of the RMSD is not understood</source>
        <translation>der RMSD-Bericht des Plug-ins ist nicht zu verstehen</translation>
    </message>
    <message>
        <source>the RMSD is not a number</source>
        <translation>der RMSD ist keine Zahl</translation>
    </message>
    <message>
        <source>the spectrum has no frequencies</source>
        <translation>das Spektrum hat keine Frequenzen</translation>
    </message>
    <message>
        <source>failed without a message</source>
        <translation>ohne Meldung fehlgeschlagen</translation>
    </message>
    <message>
        <source>Reference, ppm</source>
        <translation>Referenz, ppm</translation>
    </message>
    <message>
        <source>Offset, ppm</source>
        <translation>Änderung, ppm</translation>
    </message>
    <message>
        <source>RMSD F2, ppm</source>
        <translation>RMSD F2, ppm</translation>
    </message>
    <message>
        <source>RMSD F1, ppm</source>
        <translation>RMSD F1, ppm</translation>
    </message>
    <message>
        <source>the file ends within this line</source>
        <translation>die Datei endet in dieser Zeile</translation>
    </message>
    <message>
        <source>expected a number for %1, found %2</source>
        <translation>für %1 wurde eine Zahl erwartet, %2 gefunden</translation>
    </message>
    <message>
        <source>expected %1 fields, found %2</source>
        <translation>%1 Felder wurden erwartet, %2 gefunden</translation>
    </message>
    <message>
        <source>a structure with a rank has no %1</source>
        <translation>eine Struktur mit Rang hat kein %1</translation>
    </message>
    <message>
        <source>%1 is beyond all numbers: shieldings, slope or σ are much too large or too small</source>
        <translation>%1 liegt jenseits aller Zahlen: Abschirmungen, Steigung oder σ sind viel zu groß oder zu klein</translation>
    </message>
    <message>
        <source>a structure without a rank has a number for %1</source>
        <translation>eine Struktur ohne Rang hat eine Zahl für %1</translation>
    </message>
    <message>
        <source>the name of the structure is missing</source>
        <translation>der Name der Struktur fehlt</translation>
    </message>
    <message>
        <source>expected either a rank or a message</source>
        <translation>entweder ein Rang oder eine Meldung wurde erwartet</translation>
    </message>
    <message>
        <source>Rank</source>
        <translation>Rang</translation>
    </message>
    <message>
        <source>RMSD, ppm</source>
        <translation>RMSD, ppm</translation>
    </message>
    <message>
        <source>Peaks</source>
        <translation>Peaks</translation>
    </message>
    <message>
        <source>Experimental</source>
        <translation>Experiment</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>expected the output of rank in csv format, which begins with %1</source>
        <translation>die csv-Ausgabe von rank wurde erwartet, die mit %1 beginnt</translation>
    </message>
    <message>
        <source>%1 stands in %2 already</source>
        <translation>%1 steht schon in %2</translation>
    </message>
    <message>
        <source>%1, line %2</source>
        <translation>%1, Zeile %2</translation>
    </message>
    <message>
        <source>a worker process cannot be started: </source>
        <translation>ein Arbeitsprozess kann nicht gestartet werden: </translation>
    </message>
    <message>
        <source>the program crashed while it worked on this file</source>
        <translation>das Programm ist bei dieser Datei abgestürzt</translation>
    </message>
    <message>
        <source>the program ended with status %1 while it worked on this file</source>
        <translation>das Programm endete bei dieser Datei mit Status %1</translation>
    </message>
    <message>
        <source>option %1 needs --nucleus: without it no spectrum is drawn</source>
        <translation>Option %1 braucht --nucleus: ohne diese wird kein Spektrum gezeichnet</translation>
    </message>
    <message>
        <source>Labels</source>
        <translation>Bezeichnungen</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>option %1 needs a 2D spectrum (give --nucleus-f1 or --dims 2)</source>
        <translation>Option %1 braucht ein 2D-Spektrum (--nucleus-f1 oder --dims 2)</translation>
    </message>
    <message>
        <source>options --%1 and --%1-f1 differ, but both dimensions have the same nucleus and a nucleus has one %1</source>
        <translation>die Optionen --%1 und --%1-f1 unterscheiden sich, beide Dimensionen haben aber denselben Kern, und für einen Kern gibt es nur ein %1</translation>
    </message>
    <message>
        <source>option %1: &quot;%2&quot; is not an NMR nucleus%3</source>
        <translation>Option %1: „%2“ ist kein NMR-Kern%3</translation>
    </message>
    <message>
        <source>; those of the element are %1</source>
        <translation>; die des Elements sind %1</translation>
    </message>
    <message>
        <source>option --isotope: %1 is not a quadrupolar isotope of %2 (%3)</source>
        <translation>Option --isotope: %1 ist kein quadrupolares Isotop von %2 (%3)</translation>
    </message>
    <message>
        <source>it has none</source>
        <translation>es hat keines</translation>
    </message>
    <message>
        <source>it has %1</source>
        <translation>es hat %1</translation>
    </message>
    <message>
        <source>option --isotope names two isotopes of %1</source>
        <translation>Option --isotope nennt zwei Isotope von %1</translation>
    </message>
    <message>
        <source>%1 was read, but gave no table</source>
        <translation>%1 wurde gelesen, ergab aber keine Tabelle</translation>
    </message>
    <message>
        <source>%1 has no site of %2; it has sites of %3</source>
        <translation>%1 hat keinen Platz von %2; es gibt Plätze von %3</translation>
    </message>
    <message>
        <source>the plug-in cannot simulate %1</source>
        <translation>das Plug-in kann %1 nicht simulieren</translation>
    </message>
    <message>
        <source>the plug-in gave no row for every atom of %1</source>
        <translation>das Plug-in gab nicht für jedes Atom von %1 eine Zeile</translation>
    </message>
    <message>
        <source>%1 (without shielding)</source>
        <translation>%1 (ohne Abschirmung)</translation>
    </message>
    <message>
        <source>the plug-in that read %1 has no method %2</source>
        <translation>das Plug-in, das %1 gelesen hat, hat keine Methode %2</translation>
    </message>
    <message>
        <source>the plug-in made no spectrum of %1</source>
        <translation>das Plug-in hat von %1 kein Spektrum gemacht</translation>
    </message>
    <message>
        <source>Protons of no averaged group that are in the peak of one all the same, as they share its label: %1 (the first one %2)</source>
        <translation>Protonen keiner gemittelten Gruppe, die trotzdem im Signal einer solchen sind, weil sie deren Bezeichnung teilen: %1 (das erste %2)</translation>
    </message>
    <message>
        <source>the plug-in gave no report</source>
        <translation>das Plug-in hat keinen Bericht gegeben</translation>
    </message>
    <message>
        <source>option %1: &quot;%2&quot; names no nucleus, as in 13C=170</source>
        <translation>Option %1: „%2“ nennt keinen Kern wie in 13C=170</translation>
    </message>
    <message>
        <source>option %1: %2 is not among the nuclei given</source>
        <translation>Option %1: %2 ist keiner der angegebenen Kerne</translation>
    </message>
    <message>
        <source>option --nucleus: &quot;%1&quot; is not an NMR nucleus</source>
        <translation>Option --nucleus: „%1“ ist kein NMR-Kern</translation>
    </message>
    <message>
        <source>option --nucleus: %1 is given twice</source>
        <translation>Option --nucleus: %1 ist zweimal angegeben</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is %2, expected %3</source>
        <translation>„%1“ ist %2, erwartet wurde %3</translation>
    </message>
    <message>
        <source>its &quot;ID&quot; is null or not its own</source>
        <translation>seine „ID“ ist null oder nicht seine eigene</translation>
    </message>
    <message>
        <source>a map was expected</source>
        <translation>eine Map wurde erwartet</translation>
    </message>
    <message>
        <source>the &quot;ID&quot; of its description is another one</source>
        <translation>die „ID“ seiner Beschreibung ist eine andere</translation>
    </message>
    <message>
        <source>its active spectrum is none of its spectra</source>
        <translation>sein aktives Spektrum ist keines seiner Spektren</translation>
    </message>
    <message>
        <source>its place is %1, expected within %2 of the first page</source>
        <translation>seine Lage ist %1, erwartet wurde eine innerhalb von %2 der ersten Seite</translation>
    </message>
    <message>
        <source>an item of the kind &quot;%1&quot; is not known</source>
        <translation>ein Objekt der Art „%1“ ist nicht bekannt</translation>
    </message>
    <message>
        <source>the document</source>
        <translation>das Dokument</translation>
    </message>
    <message>
        <source>it names the item %1, which is not there</source>
        <translation>es nennt das Element %1, das es nicht gibt</translation>
    </message>
    <message>
        <source>%1, line %2: %3</source>
        <translation>%1, Zeile %2: %3</translation>
    </message>
    <message>
        <source>an axis of %1 points from %2 to %3 ppm is not that of a spectrum</source>
        <translation>eine Achse aus %1 Punkten von %2 bis %3 ppm ist keine eines Spektrums</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>diese Datei gibt es nicht</translation>
    </message>
    <message>
        <source>this is not a regular file</source>
        <translation>dies ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>the file cannot be opened (%1)</source>
        <translation>die Datei kann nicht geöffnet werden (%1)</translation>
    </message>
    <message>
        <source>the file has %1 bytes, at most %2 were expected</source>
        <translation>die Datei hat %1 Bytes, höchstens %2 wurden erwartet</translation>
    </message>
    <message>
        <source>only %1 of %2 bytes could be read</source>
        <translation>nur %1 von %2 Bytes konnten gelesen werden</translation>
    </message>
    <message>
        <source>this line is longer than %1 bytes</source>
        <translation>diese Zeile ist länger als %1 Bytes</translation>
    </message>
    <message>
        <source>Chemical shift / ppm</source>
        <translation>Chemische Verschiebung / ppm</translation>
    </message>
    <message>
        <source>%1 chemical shift / ppm</source>
        <translation>Chemische Verschiebung %1 / ppm</translation>
    </message>
    <message>
        <source>The spectrum has no data points</source>
        <translation>Das Spektrum hat keine Datenpunkte</translation>
    </message>
    <message>
        <source>The spectrum has %1 points where its dimensions, %2 by %3, say otherwise</source>
        <translation>Das Spektrum hat %1 Punkte; seine Dimensionen, %2 mal %3, sagen etwas anderes</translation>
    </message>
    <message>
        <source>The spectrum has no valid frequency, width and reference for its dimension F%1</source>
        <translation>Das Spektrum hat für seine Dimension F%1 keine gültige Frequenz, Breite und Referenz</translation>
    </message>
    <message>
        <source>unknown method</source>
        <translation>unbekannte Methode</translation>
    </message>
    <message>
        <source>%1 eV</source>
        <translation>%1 eV</translation>
    </message>
    <message>
        <source>The plug-in &quot;%1&quot;, which made the table &quot;%2&quot;, is not loaded. The table shows nothing here; saving the document keeps it.</source>
        <translation>Das Plug-in „%1“, das die Tabelle „%2“ angelegt hat, ist nicht geladen. Die Tabelle zeigt hier nichts; beim Speichern des Dokuments bleibt sie erhalten.</translation>
    </message>
    <message>
        <source>the picture cannot be drawn</source>
        <translation>das Bild kann nicht gezeichnet werden</translation>
    </message>
    <message>
        <source>the picture is too large for an image</source>
        <translation>das Bild ist zu groß</translation>
    </message>
    <message>
        <source>the image cannot be written</source>
        <translation>das Bild kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>the next page cannot be started</source>
        <translation>die nächste Seite kann nicht begonnen werden</translation>
    </message>
    <message>
        <source>the file name must end in .png, .svg or .pdf</source>
        <translation>der Dateiname muss auf .png, .svg oder .pdf enden</translation>
    </message>
    <message>
        <source>the spectrum is on no page</source>
        <translation>das Spektrum steht auf keiner Seite</translation>
    </message>
    <message>
        <source>the file name must end in .%1</source>
        <translation>der Dateiname muss auf .%1 enden</translation>
    </message>
    <message>
        <source>expected a number, found %1</source>
        <translation>eine Zahl wurde erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>a point has no ordinate (&quot;?&quot;), a number was expected</source>
        <translation>ein Punkt hat keine Ordinate („?“), eine Zahl wurde erwartet</translation>
    </message>
    <message>
        <source>expected an ordinate, found %1</source>
        <translation>eine Ordinate wurde erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>no ordinate follows the X value</source>
        <translation>auf den X-Wert folgt keine Ordinate</translation>
    </message>
    <message>
        <source>the line begins with a difference, an ordinate was expected</source>
        <translation>die Zeile beginnt mit einer Differenz, eine Ordinate wurde erwartet</translation>
    </message>
    <message>
        <source>a repeat count stands where an ordinate was expected</source>
        <translation>eine Wiederholungszahl steht, wo eine Ordinate erwartet wurde</translation>
    </message>
    <message>
        <source>the Y-check fails: the line begins with %1 where the line before ended with %2</source>
        <translation>die Y-Prüfung schlägt fehl: die Zeile beginnt mit %1, die vorige endete mit %2</translation>
    </message>
    <message>
        <source>there are more points than the %1 that were announced</source>
        <translation>es sind mehr Punkte als die %1 angekündigten</translation>
    </message>
    <message>
        <source>an ordinate is repeated %1 times where %2 points are left of the %3 announced</source>
        <translation>eine Ordinate wird %1-mal wiederholt, wo von den angekündigten %3 Punkten noch %2 übrig sind</translation>
    </message>
    <message>
        <source>the data end after %1 points where %2 were announced</source>
        <translation>die Daten enden nach %1 Punkten, %2 waren angekündigt</translation>
    </message>
    <message>
        <source>expected a number for %1 of a peak, found &quot;%2&quot;</source>
        <translation>für %1 eines Peaks wurde eine Zahl erwartet, „%2“ gefunden</translation>
    </message>
    <message>
        <source>Bruker peak list</source>
        <translation>Bruker-Peakliste</translation>
    </message>
    <message>
        <source>peaks of one and of two dimensions are mixed</source>
        <translation>Peaks einer und zweier Dimensionen sind gemischt</translation>
    </message>
    <message>
        <source>the file holds no peaks</source>
        <translation>die Datei enthält keine Peaks</translation>
    </message>
    <message>
        <source>The file has %1 lists, their peaks were joined.</source>
        <translation>Die Datei hat %1 Listen, ihre Peaks wurden zusammengelegt.</translation>
    </message>
    <message>
        <source>the parameter %1 is missing</source>
        <translation>der Parameter %1 fehlt</translation>
    </message>
    <message>
        <source>expected 2 to %1 points, found %2</source>
        <translation>2 bis %1 Punkte wurden erwartet, %2 gefunden</translation>
    </message>
    <message>
        <source>expected a frequency in MHz, found %1</source>
        <translation>eine Frequenz in MHz wurde erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>expected a width in Hz, found %1</source>
        <translation>eine Breite in Hz wurde erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>expected 0 (little endian) or 1 (big endian), found %1</source>
        <translation>0 (Little Endian) oder 1 (Big Endian) wurde erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>expected 0 (32-bit integers) or 2 (doubles), found %1</source>
        <translation>0 (32-Bit-Ganzzahlen) oder 2 (Doubles) wurde erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>expected an exponent of two of at most %1, found %2</source>
        <translation>ein Zweierexponent von höchstens %1 wurde erwartet, %2 gefunden</translation>
    </message>
    <message>
        <source>expected a block of at most %1 points, found %2</source>
        <translation>ein Block von höchstens %1 Punkten wurde erwartet, %2 gefunden</translation>
    </message>
    <message>
        <source>the data file is missing</source>
        <translation>die Datei mit den Daten fehlt</translation>
    </message>
    <message>
        <source>%1 points (%2) are too many</source>
        <translation>%1 Punkte (%2) sind zu viele</translation>
    </message>
    <message>
        <source>the file has %1 bytes where the parameters (%2, %3 bytes a point) make %4</source>
        <translation>die Datei hat %1 Bytes, nach den Parametern (%2, %3 Bytes je Punkt) wären es %4</translation>
    </message>
    <message>
        <source>point %1 is not a finite number</source>
        <translation>Punkt %1 ist keine endliche Zahl</translation>
    </message>
    <message>
        <source>F1 was not Fourier-transformed, so this is a series of spectra and no 2D spectrum: extract the row that you want as a 1D spectrum (rsr in TopSpin)</source>
        <translation>F1 wurde nicht fouriertransformiert; dies ist also eine Reihe von Spektren und kein 2D-Spektrum: ziehen Sie die gewünschte Zeile als 1D-Spektrum heraus (rsr in TopSpin)</translation>
    </message>
    <message>
        <source>Processing %1 was read; there are also %2.</source>
        <translation>Die Prozessierung %1 wurde gelesen; es gibt auch %2.</translation>
    </message>
    <message>
        <source>no processed data were found here: expected a file 1r or 2rr, in this folder or in pdata/1</source>
        <translation>hier wurden keine prozessierten Daten gefunden: erwartet wurde eine Datei 1r oder 2rr, in diesem Ordner oder in pdata/1</translation>
    </message>
    <message>
        <source>%1: expected a number with its unit, found &quot;%2&quot;</source>
        <translation>%1: eine Zahl mit Einheit wurde erwartet, „%2“ gefunden</translation>
    </message>
    <message>
        <source>%1 is in %2: a spectrum in Hz or ppm was expected</source>
        <translation>%1 ist in %2: ein Spektrum in Hz oder ppm wurde erwartet</translation>
    </message>
    <message>
        <source>a dimension of %1 points is none of a spectrum</source>
        <translation>eine Dimension von %1 Punkten ist keine eines Spektrums</translation>
    </message>
    <message>
        <source>increment and coordinates_offset differ in their units</source>
        <translation>increment und coordinates_offset haben verschiedene Einheiten</translation>
    </message>
    <message>
        <source>the coordinates of a monotonic dimension are not evenly spaced, as those of a spectrum must be</source>
        <translation>die Koordinaten einer monotonen Dimension haben keine gleichen Abstände, wie sie ein Spektrum haben muss</translation>
    </message>
    <message>
        <source>expected a linear or a monotonic dimension, found &quot;%1&quot;</source>
        <translation>eine lineare oder eine monotone Dimension wurde erwartet, „%1“ gefunden</translation>
    </message>
    <message>
        <source>the dimension is in Hz and has no origin_offset: the frequency of 0 ppm in MHz is needed to make ppm of it and must be given</source>
        <translation>die Dimension ist in Hz und hat kein origin_offset: um daraus ppm zu machen, muss die Frequenz von 0 ppm in MHz angegeben werden</translation>
    </message>
    <message>
        <source>Hz were divided by %1 MHz, the origin offset less the coordinate of the middle.</source>
        <translation>Hz wurden durch %1 MHz geteilt, das origin offset abzüglich der Koordinate der Mitte.</translation>
    </message>
    <message>
        <source>Hz were divided by %1 MHz; 0 Hz was taken as 0 ppm.</source>
        <translation>Hz wurden durch %1 MHz geteilt; 0 Hz wurde als 0 ppm genommen.</translation>
    </message>
    <message>
        <source>A dimension names no unit: it was taken as ppm.</source>
        <translation>Eine Dimension nennt keine Einheit: sie wurde als ppm genommen.</translation>
    </message>
    <message>
        <source>numeric_type &quot;%1&quot; is not known</source>
        <translation>numeric_type „%1“ ist nicht bekannt</translation>
    </message>
    <message>
        <source>the values have %1 bytes, the dimensions make %2</source>
        <translation>die Werte haben %1 Bytes, nach den Dimensionen wären es %2</translation>
    </message>
    <message>
        <source>there are %1 numbers, the dimensions make %2</source>
        <translation>es sind %1 Zahlen, nach den Dimensionen wären es %2</translation>
    </message>
    <message>
        <source>value %1 is no number</source>
        <translation>Wert %1 ist keine Zahl</translation>
    </message>
    <message>
        <source>the values lie at &quot;%1&quot;, a file beside this one was expected</source>
        <translation>die Werte liegen in „%1“, erwartet wurde eine Datei neben dieser</translation>
    </message>
    <message>
        <source>encoding &quot;%1&quot; was found, base64, raw or none was expected</source>
        <translation>die Kodierung „%1“ wurde gefunden, base64, raw oder none wurde erwartet</translation>
    </message>
    <message>
        <source>the values are no base64 text</source>
        <translation>die Werte sind kein base64-Text</translation>
    </message>
    <message>
        <source>byte %1: %2</source>
        <translation>Byte %1: %2</translation>
    </message>
    <message>
        <source>expected one or two dimensions, found %1</source>
        <translation>eine oder zwei Dimensionen wurden erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>there are no dependent variables</source>
        <translation>es gibt keine abhängigen Variablen</translation>
    </message>
    <message>
        <source>%1 points are too many</source>
        <translation>%1 Punkte sind zu viele</translation>
    </message>
    <message>
        <source>Of %1 dependent variables the first one was read.</source>
        <translation>Von %1 abhängigen Variablen wurde die erste gelesen.</translation>
    </message>
    <message>
        <source>The imaginary part was left out.</source>
        <translation>Der Imaginärteil wurde weggelassen.</translation>
    </message>
    <message>
        <source>Of %1 components the first one was read.</source>
        <translation>Von %1 Komponenten wurde die erste gelesen.</translation>
    </message>
    <message>
        <source>a value is not a finite number</source>
        <translation>ein Wert ist keine endliche Zahl</translation>
    </message>
    <message>
        <source>this is not a document of the Magres Workbench</source>
        <translation>dies ist kein Dokument der Magres Workbench</translation>
    </message>
    <message>
        <source>the file is cut off after %1 bytes</source>
        <translation>die Datei ist nach %1 Bytes abgeschnitten</translation>
    </message>
    <message>
        <source>the document is of format version %1, written by a newer program; this one reads versions up to %2</source>
        <translation>das Dokument hat die Formatversion %1 eines neueren Programms; dieses liest Versionen bis %2</translation>
    </message>
    <message>
        <source>there is no format version 0 of documents</source>
        <translation>eine Formatversion 0 gibt es bei Dokumenten nicht</translation>
    </message>
    <message>
        <source>the file is cut off or damaged: it has %1 bytes after its header, %2 were expected (%3 of contents and %4 of checksum)</source>
        <translation>die Datei ist abgeschnitten oder beschädigt: nach ihrem Kopf hat sie %1 Bytes, %2 wurden erwartet (%3 Inhalt und %4 Prüfsumme)</translation>
    </message>
    <message>
        <source>%1: canceled</source>
        <translation>%1: abgebrochen</translation>
    </message>
    <message>
        <source>%1: there is not enough memory</source>
        <translation>%1: der Speicher reicht nicht</translation>
    </message>
    <message>
        <source>the file is damaged before byte %1: %2</source>
        <translation>die Datei ist vor Byte %1 beschädigt: %2</translation>
    </message>
    <message>
        <source>the file is damaged: %1 bytes follow its contents</source>
        <translation>die Datei ist beschädigt: auf ihren Inhalt folgen %1 Bytes</translation>
    </message>
    <message>
        <source>the file is damaged: its contents do not agree with its checksum</source>
        <translation>die Datei ist beschädigt: ihr Inhalt passt nicht zu ihrer Prüfsumme</translation>
    </message>
    <message>
        <source>a file was expected</source>
        <translation>eine Datei wurde erwartet</translation>
    </message>
    <message>
        <source>the file cannot be written: %1</source>
        <translation>die Datei kann nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>%1 has %2 dimension(s), the spectrum in the plot has %3</source>
        <translation>%1 hat %2 Dimension(en), das Spektrum im Plot hat %3</translation>
    </message>
    <message>
        <source>%1 is a spectrum of %2, the plot shows one of %3</source>
        <translation>%1 ist ein Spektrum von %2, der Plot zeigt eines von %3</translation>
    </message>
    <message>
        <source>there is no spectrum to put %1 beside</source>
        <translation>es gibt kein Spektrum, neben das %1 gestellt werden könnte</translation>
    </message>
    <message>
        <source>this is data of %1, which cannot be read here: open it in the software that it belongs to and export the processed spectrum as JCAMP-DX (.jdx) or as text with ppm and intensity</source>
        <translation>dies sind Daten von %1, die hier nicht gelesen werden können: öffnen Sie sie in der zugehörigen Software und exportieren Sie das prozessierte Spektrum als JCAMP-DX (.jdx) oder als Text mit ppm und Intensität</translation>
    </message>
    <message>
        <source>these are raw data of a Bruker spectrometer (fid or ser): process them in TopSpin (for example efp, apk) and choose the folder again, or its pdata/1/1r</source>
        <translation>dies sind Rohdaten eines Bruker-Spektrometers (fid oder ser): prozessieren Sie sie in TopSpin (etwa mit efp, apk) und wählen Sie dann wieder den Ordner oder sein pdata/1/1r</translation>
    </message>
    <message>
        <source>$SW_p and $SF make a width of %1 ppm, the table has one of %2 ppm: $OFFSET was not used.</source>
        <translation>$SW_p und $SF ergeben eine Breite von %1 ppm, die Tabelle hat eine von %2 ppm: $OFFSET wurde nicht verwendet.</translation>
    </message>
    <message>
        <source>.SHIFT REFERENCE names point %1, points count from 1: it was not used.</source>
        <translation>.SHIFT REFERENCE nennt Punkt %1, Punkte zählen ab 1: die Angabe wurde nicht verwendet.</translation>
    </message>
    <message>
        <source>The file&apos;s statements about its axis differ: by %1 the first point lies at %2 ppm, which was taken; by %3 it would lie at %4 ppm and the last one %5 ppm off.</source>
        <translation>Die Angaben der Datei zu ihrer Achse widersprechen sich: nach %1 liegt der erste Punkt bei %2 ppm, so wurde er genommen; nach %3 läge er bei %4 ppm und der letzte um %5 ppm daneben.</translation>
    </message>
    <message>
        <source>The file names no frequency for F1: %1 MHz of %2 follows from the observe frequency and the ratio of the nuclei.</source>
        <translation>Die Datei nennt keine Frequenz für F1: %1 MHz von %2 folgen aus der Beobachtungsfrequenz und dem Verhältnis der Kerne.</translation>
    </message>
    <message>
        <source>The file names no frequency for %1; %2 MHz was taken from elsewhere.</source>
        <translation>Die Datei nennt keine Frequenz für %1; %2 MHz kamen aus anderer Quelle.</translation>
    </message>
    <message>
        <source>expected X values in HZ or PPM, found %1</source>
        <translation>X-Werte in HZ oder PPM wurden erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>F1 is in Hz and its frequency in MHz is not in the file: it must be given</source>
        <translation>F1 ist in Hz und seine Frequenz in MHz steht nicht in der Datei: sie muss angegeben werden</translation>
    </message>
    <message>
        <source>the X values</source>
        <translation>die X-Werte</translation>
    </message>
    <message>
        <source>0 Hz was taken as 0 ppm: the file names no reference.</source>
        <translation>0 Hz wurde als 0 ppm genommen: die Datei nennt keine Referenz.</translation>
    </message>
    <message>
        <source>the block that begins here has no record ##%1=</source>
        <translation>der Block, der hier beginnt, hat keinen Eintrag ##%1=</translation>
    </message>
    <message>
        <source>a JCAMP-DX file was expected, no record ##TITLE= was found</source>
        <translation>eine JCAMP-DX-Datei wurde erwartet, es fand sich kein Eintrag ##TITLE=</translation>
    </message>
    <message>
        <source>the spectrum holds no data</source>
        <translation>das Spektrum enthält keine Daten</translation>
    </message>
    <message>
        <source>the spectrum has points that are not numbers, which JCAMP-DX cannot hold</source>
        <translation>das Spektrum hat Punkte, die keine Zahlen sind; JCAMP-DX kann sie nicht aufnehmen</translation>
    </message>
    <message>
        <source>the data cannot be written: %1</source>
        <translation>die Daten können nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>expected peaks (XY..XY) or (XYA), found %1</source>
        <translation>Peaks (XY..XY) oder (XYA) wurden erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>JCAMP-DX peak list</source>
        <translation>JCAMP-DX-Peakliste</translation>
    </message>
    <message>
        <source>The file names no units: the positions were taken as ppm.</source>
        <translation>Die Datei nennt keine Einheiten: die Positionen wurden als ppm genommen.</translation>
    </message>
    <message>
        <source>%1 peaks were announced, %2 are there</source>
        <translation>%1 Peaks waren angekündigt, %2 sind da</translation>
    </message>
    <message>
        <source>the table&apos;s symbol %1 is not in this list</source>
        <translation>das Symbol %1 der Tabelle steht nicht in dieser Liste</translation>
    </message>
    <message>
        <source>%1 points cannot be, between 2 and %2 were expected</source>
        <translation>%1 Punkte kann es nicht geben, zwischen 2 und %2 wurden erwartet</translation>
    </message>
    <message>
        <source>the first and the last X value (%1, %2) span no axis</source>
        <translation>der erste und der letzte X-Wert (%1, %2) spannen keine Achse auf</translation>
    </message>
    <message>
        <source>the file ends within this line, ##END= was expected</source>
        <translation>die Datei endet in dieser Zeile, ##END= wurde erwartet</translation>
    </message>
    <message>
        <source>an ordinate times its factor (%1) is too large</source>
        <translation>eine Ordinate mal ihrem Faktor (%1) ist zu groß</translation>
    </message>
    <message>
        <source>Line %1 says that it begins at X = %2, by its place that is %3: the points were placed by their count.</source>
        <translation>Zeile %1 sagt, sie beginne bei X = %2, nach ihrem Platz ist es %3: die Punkte wurden nach ihrer Zahl gesetzt.</translation>
    </message>
    <message>
        <source>%1 × %2 points are more than the file can hold</source>
        <translation>%1 × %2 Punkte sind mehr, als die Datei enthalten kann</translation>
    </message>
    <message>
        <source>there are more rows than the %1 announced</source>
        <translation>es sind mehr Zeilen als die %1 angekündigten</translation>
    </message>
    <message>
        <source>The row at line %1 says that it lies at %2, by its place that is %3: the rows were placed by their count.</source>
        <translation>Die Messzeile in Zeile %1 sagt, sie liege bei %2, nach ihrem Platz ist es %3: die Messzeilen wurden nach ihrer Zahl gesetzt.</translation>
    </message>
    <message>
        <source>%1 rows were announced, %2 are there</source>
        <translation>%1 Zeilen waren angekündigt, %2 sind da</translation>
    </message>
    <message>
        <source>the block that begins here has no table (X++(R..R))</source>
        <translation>der Block, der hier beginnt, hat keine Tabelle (X++(R..R))</translation>
    </message>
    <message>
        <source>expected a table (X++(Y..Y)), found %1</source>
        <translation>eine Tabelle (X++(Y..Y)) wurde erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>this is an FID, a spectrum was expected: transform it with the spectrometer&apos;s software and export the spectrum</source>
        <translation>dies ist ein FID, ein Spektrum wurde erwartet: transformieren Sie ihn mit der Software des Spektrometers und exportieren Sie das Spektrum</translation>
    </message>
    <message>
        <source>expected a block with the data type &quot;NMR SPECTRUM&quot; and a table, or one with peaks, found %1</source>
        <translation>ein Block mit dem Datentyp „NMR SPECTRUM“ und einer Tabelle oder einer mit Peaks wurde erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>more than %1 records are too many</source>
        <translation>mehr als %1 Einträge sind zu viele</translation>
    </message>
    <message>
        <source>File %1 cannot be written: %2</source>
        <translation>Die Datei %1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>it is a directory</source>
        <translation>sie ist ein Verzeichnis</translation>
    </message>
    <message>
        <source>the line %1= is missing before DATA</source>
        <translation>vor DATA fehlt die Zeile %1=</translation>
    </message>
    <message>
        <source>expected TYPE=SPE, found %1: transform the FID (fft) and save the spectrum</source>
        <translation>TYPE=SPE wurde erwartet, %1 gefunden: transformieren Sie den FID (fft) und speichern Sie das Spektrum</translation>
    </message>
    <message>
        <source>the points are in binary form: save the spectrum as text (fsave without -binary)</source>
        <translation>die Punkte sind binär gespeichert: speichern Sie das Spektrum als Text (fsave ohne -binary)</translation>
    </message>
    <message>
        <source>NP=%1, NI=%2 are no size of a spectrum</source>
        <translation>NP=%1, NI=%2 sind keine Größe eines Spektrums</translation>
    </message>
    <message>
        <source>the positions are in Hz: the frequency of 0 ppm in MHz is needed to make ppm of them and must be given</source>
        <translation>die Positionen sind in Hz: um daraus ppm zu machen, muss die Frequenz von 0 ppm in MHz angegeben werden</translation>
    </message>
    <message>
        <source>expected a real and an imaginary part, found %1</source>
        <translation>ein Real- und ein Imaginärteil wurden erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>there are more points than the %1 announced</source>
        <translation>es sind mehr Punkte als die %1 angekündigten</translation>
    </message>
    <message>
        <source>the data end after %1 points where %2 and END were expected</source>
        <translation>die Daten enden nach %1 Punkten, %2 und END wurden erwartet</translation>
    </message>
    <message>
        <source>the spectrum holds no data: %1</source>
        <translation>das Spektrum enthält keine Daten: %1</translation>
    </message>
    <message>
        <source>this is no measurement that can be read: expected a Bruker folder or its file 1r or 2rr, JCAMP-DX, CSDM, SIMPSON or text with ppm and intensity</source>
        <translation>dies ist keine Messung, die gelesen werden kann: erwartet wurde ein Bruker-Ordner oder dessen Datei 1r oder 2rr, JCAMP-DX, CSDM, SIMPSON oder Text mit ppm und Intensität</translation>
    </message>
    <message>
        <source>a spectrum was expected. %1</source>
        <translation>ein Spektrum wurde erwartet. %1</translation>
    </message>
    <message>
        <source>%1 columns of numbers need a header line that names them, such as &quot;ppm,intensity&quot;</source>
        <translation>%1 Spalten mit Zahlen brauchen eine Kopfzeile mit ihren Namen, etwa „ppm,intensity“</translation>
    </message>
    <message>
        <source>the first column counts the points, a position in ppm or Hz was expected; if these are positions, say so in a header line &quot;ppm,intensity&quot;</source>
        <translation>die erste Spalte zählt die Punkte, eine Position in ppm oder Hz wurde erwartet; wenn es Positionen sind, sagen Sie das in einer Kopfzeile „ppm,intensity“</translation>
    </message>
    <message>
        <source>The first column was taken as the number of the peak, the second as its position.</source>
        <translation>Die erste Spalte wurde als Nummer des Peaks genommen, die zweite als seine Position.</translation>
    </message>
    <message>
        <source>The three columns were taken as position, real and imaginary part.</source>
        <translation>Die drei Spalten wurden als Position, Real- und Imaginärteil genommen.</translation>
    </message>
    <message>
        <source>The columns were taken as number, position and height of the peaks.</source>
        <translation>Die Spalten wurden als Nummer, Position und Höhe der Peaks genommen.</translation>
    </message>
    <message>
        <source>expected &quot;position[,height]&quot;, found 3 fields</source>
        <translation>„position[,height]“ wurde erwartet, 3 Felder gefunden</translation>
    </message>
    <message>
        <source>The columns were taken as position in F2, position in F1 and height.</source>
        <translation>Die Spalten wurden als Position in F2, Position in F1 und Höhe genommen.</translation>
    </message>
    <message>
        <source>four columns without names were expected to be number, intensity, Hz and ppm; a header line such as &quot;ppm,intensity&quot; tells what they are</source>
        <translation>bei vier Spalten ohne Namen wurden Nummer, Intensität, Hz und ppm erwartet; eine Kopfzeile wie „ppm,intensity“ sagt, was sie sind</translation>
    </message>
    <message>
        <source>The four columns were taken as number, intensity, Hz and ppm.</source>
        <translation>Die vier Spalten wurden als Nummer, Intensität, Hz und ppm genommen.</translation>
    </message>
    <message>
        <source>Columns that were not used: %1.</source>
        <translation>Nicht verwendete Spalten: %1.</translation>
    </message>
    <message>
        <source>no table of numbers was found, expected &quot;ppm,intensity&quot; or peaks</source>
        <translation>es wurde keine Tabelle mit Zahlen gefunden, erwartet wurde „ppm,intensity“ oder Peaks</translation>
    </message>
    <message>
        <source>expected %1 fields as in the lines before, found %2</source>
        <translation>%1 Felder wie in den Zeilen davor wurden erwartet, %2 gefunden</translation>
    </message>
    <message>
        <source>the positions are frequencies without a unit: ppm, Hz or kHz must be given</source>
        <translation>die Positionen sind Frequenzen ohne Einheit: ppm, Hz oder kHz muss angegeben werden</translation>
    </message>
    <message>
        <source>The file names no unit: the positions were taken as ppm.</source>
        <translation>Die Datei nennt keine Einheit: die Positionen wurden als ppm genommen.</translation>
    </message>
    <message>
        <source>the positions are in %1: the frequency of 0 ppm in MHz is needed to make ppm of them and must be given</source>
        <translation>die Positionen sind in %1: um daraus ppm zu machen, muss die Frequenz von 0 ppm in MHz angegeben werden</translation>
    </message>
    <message>
        <source>Positions in %1 were divided by %2 MHz; 0 Hz was taken as 0 ppm.</source>
        <translation>Positionen in %1 wurden durch %2 MHz geteilt; 0 Hz wurde als 0 ppm genommen.</translation>
    </message>
    <message>
        <source>the points are not evenly spaced: %1 follows %2 where the step is %3</source>
        <translation>die Punkte haben keine gleichen Abstände: %1 folgt auf %2, wo die Schrittweite %3 ist</translation>
    </message>
    <message>
        <source>Read as a spectrum: %1 evenly spaced positions.</source>
        <translation>Als Spektrum gelesen: %1 Positionen in gleichen Abständen.</translation>
    </message>
    <message>
        <source>text table</source>
        <translation>Texttabelle</translation>
    </message>
    <message>
        <source>the positions are not evenly spaced</source>
        <translation>die Positionen haben keine gleichen Abstände</translation>
    </message>
    <message>
        <source>a spectrum has %1 rows at least</source>
        <translation>ein Spektrum hat mindestens %1 Zeilen</translation>
    </message>
    <message>
        <source>text peak list</source>
        <translation>Text-Peakliste</translation>
    </message>
    <message>
        <source>Read as a list of %1 peaks.</source>
        <translation>Als Liste von %1 Peaks gelesen.</translation>
    </message>
    <message>
        <source>Read as a list of %1 peaks: %2.</source>
        <translation>Als Liste von %1 Peaks gelesen: %2.</translation>
    </message>
    <message>
        <source>more than %1 peaks are too many</source>
        <translation>mehr als %1 Peaks sind zu viele</translation>
    </message>
    <message>
        <source>expected a count of sites from 1 on, found %1</source>
        <translation>eine Anzahl von Plätzen ab 1 wurde erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>expected rows of %1 points with the same positions</source>
        <translation>Zeilen von %1 Punkten mit denselben Positionen wurden erwartet</translation>
    </message>
    <message>
        <source>%1 points do not make two or more rows of %2 points</source>
        <translation>%1 Punkte ergeben nicht zwei oder mehr Zeilen von %2 Punkten</translation>
    </message>
    <message>
        <source>Read as a spectrum of %1 × %2 points.</source>
        <translation>Als Spektrum von %1 × %2 Punkten gelesen.</translation>
    </message>
    <message>
        <source>%1 × %2 points cannot be</source>
        <translation>%1 × %2 Punkte kann es nicht geben</translation>
    </message>
    <message>
        <source>text, region and intensities</source>
        <translation>Text, Bereich und Intensitäten</translation>
    </message>
    <message>
        <source>LEFT and RIGHT were taken as the positions of the first and the last point.</source>
        <translation>LEFT und RIGHT wurden als Positionen des ersten und des letzten Punktes genommen.</translation>
    </message>
    <message>
        <source>expected one intensity, found %1</source>
        <translation>eine Intensität wurde erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>the whole</source>
        <translation>das Ganze</translation>
    </message>
    <message>
        <source>lists and maps lie more than %1 deep in each other</source>
        <translation>Listen und Maps sind mehr als %1-fach ineinander verschachtelt</translation>
    </message>
    <message>
        <source>a value of the type %1 cannot be kept in a document</source>
        <translation>ein Wert vom Typ %1 kann nicht im Dokument bleiben</translation>
    </message>
    <message>
        <source>values of the type &quot;%1&quot; are not known</source>
        <translation>Werte vom Typ „%1“ sind nicht bekannt</translation>
    </message>
    <message>
        <source>a value of type %1 where %2 types are listed</source>
        <translation>ein Wert vom Typ %1, wo %2 Typen aufgeführt sind</translation>
    </message>
    <message>
        <source>%1 values are stated where %2 bytes are left</source>
        <translation>%1 Werte sind angegeben, wo %2 Bytes übrig sind</translation>
    </message>
    <message>
        <source>points number %1 where %2 are known</source>
        <translation>Punkte mit der Nummer %1, wo %2 bekannt sind</translation>
    </message>
    <message>
        <source>the data end too early</source>
        <translation>die Daten enden zu früh</translation>
    </message>
    <message>
        <source>the data are damaged</source>
        <translation>die Daten sind beschädigt</translation>
    </message>
    <message>
        <source>files that can be read: %1</source>
        <translation>Dateien, die gelesen werden können: %1</translation>
    </message>
    <message>
        <source>File %1 is not of a kind that is known here; %2</source>
        <translation>Die Datei %1 ist von keiner hier bekannten Art; %2</translation>
    </message>
    <message>
        <source>   intensity %1</source>
        <translation>   Intensität %1</translation>
    </message>
    <message>
        <source>%1 ppm</source>
        <translation>%1 ppm</translation>
    </message>
    <message>
        <source>Intensity / arb. units</source>
        <translation>Intensität / willk. Einh.</translation>
    </message>
    <message>
        <source>Relative intensity</source>
        <translation>Relative Intensität</translation>
    </message>
    <message>
        <source>%1 (%2 of %3 peaks beyond its range)</source>
        <translation>%1 (%2 von %3 Peaks außerhalb seines Bereichs)</translation>
    </message>
    <message>
        <source>Commands (magres-workbench COMMAND --help tells more):
</source>
        <translation>Befehle (mehr mit magres-workbench COMMAND --help):
</translation>
    </message>
    <message>
        <source>Usage: magres-workbench [FILE]...
       magres-workbench COMMAND FILE [options]

Opens files in a window, or runs a command without one.

%1
Options:
%2</source>
        <translation>Aufruf: magres-workbench [FILE]...
        magres-workbench COMMAND FILE [Optionen]

Öffnet Dateien in einem Fenster oder führt einen Befehl ohne Fenster aus.

%1
Optionen:
%2</translation>
    </message>
    <message>
        <source>there is no display to open a window on.</source>
        <translation>es gibt keine Anzeige, auf der ein Fenster geöffnet werden könnte.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>Bitte warten</translation>
    </message>
    <message>
        <source>atom %1 has no shielding</source>
        <translation>Atom %1 hat keine Abschirmung</translation>
    </message>
    <message>
        <source>there is no %1 site %2; unique sites are %3</source>
        <translation>es gibt keinen %1-Platz %2; die verschiedenen Plätze sind %3</translation>
    </message>
    <message>
        <source>%1: Cq is %2 MHz at a Larmor frequency of %3 MHz; a pattern to first order is a rough one</source>
        <translation>%1: Cq ist %2 MHz bei einer Larmorfrequenz von %3 MHz; ein Pulverspektrum in erster Ordnung ist nur eine grobe Näherung</translation>
    </message>
    <message>
        <source>%1: Cq is %2 MHz at a Larmor frequency of %3 MHz; second order fails, the pattern means nothing</source>
        <translation>%1: Cq ist %2 MHz bei einer Larmorfrequenz von %3 MHz; die zweite Ordnung versagt, das Pulverspektrum hat keine Bedeutung</translation>
    </message>
    <message>
        <source>%1: what second order leaves out moves the line by up to %2 Hz, more than its width of %3 Hz; a higher field is needed for a pattern that is true to it</source>
        <translation>%1: was die zweite Ordnung weglässt, verschiebt die Linie um bis zu %2 Hz, mehr als ihre Breite von %3 Hz; für ein Pulverspektrum, das ihr entspricht, ist ein höheres Feld nötig</translation>
    </message>
    <message>
        <source> and %1 more</source>
        <translation> und %1 weitere</translation>
    </message>
    <message>
        <source>no shielding of %1: drawn at the reference, %2 ppm</source>
        <translation>keine Abschirmung von %1: an der Referenz gezeichnet, %2 ppm</translation>
    </message>
    <message>
        <source>no electric field gradient of %1: drawn with shift anisotropy alone</source>
        <translation>kein elektrischer Feldgradient von %1: nur mit der Anisotropie der chemischen Verschiebung gezeichnet</translation>
    </message>
    <message>
        <source>no shielding of %1: left out</source>
        <translation>keine Abschirmung von %1: weggelassen</translation>
    </message>
    <message>
        <source>neither shielding nor electric field gradient of %1: left out</source>
        <translation>weder Abschirmung noch elektrischer Feldgradient von %1: weggelassen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not an NMR nucleus</source>
        <translation>„%1“ ist kein NMR-Kern</translation>
    </message>
    <message>
        <source>the frequency of %1 is not known here</source>
        <translation>die Frequenz von %1 ist hier nicht bekannt</translation>
    </message>
    <message>
        <source>there is no site of %1; there is %2</source>
        <translation>es gibt keinen Platz von %1; vorhanden ist %2</translation>
    </message>
    <message>
        <source>the %1 sites have neither shielding nor electric field gradient tensors</source>
        <translation>die Plätze von %1 haben weder Tensoren der Abschirmung noch des elektrischen Feldgradienten</translation>
    </message>
    <message>
        <source>the %1 sites have no shielding tensors</source>
        <translation>die Plätze von %1 haben keine Tensoren der Abschirmung</translation>
    </message>
    <message>
        <source>the %1 sites have no electric field gradient tensors, without which the line of a nucleus of spin %2 has no known shape</source>
        <translation>die Plätze von %1 haben keine Tensoren des elektrischen Feldgradienten; ohne diese ist die Linienform eines Kerns mit Spin %2 nicht bekannt</translation>
    </message>
    <message>
        <source>Shift anisotropy alone: no dipolar couplings; ideal excitation.</source>
        <translation>Nur Anisotropie der chemischen Verschiebung: keine Dipolkopplungen; ideale Anregung.</translation>
    </message>
    <message>
        <source>Quadrupole coupling to first order, all transitions, and shift anisotropy: no second order, no dipolar couplings or cross terms with them; ideal excitation.</source>
        <translation>Quadrupolkopplung in erster Ordnung, alle Übergänge, und Anisotropie der chemischen Verschiebung: keine zweite Ordnung, keine Dipolkopplungen oder Kreuzterme mit ihnen; ideale Anregung.</translation>
    </message>
    <message>
        <source>Central transition only, to second order, with shift anisotropy: no satellites, no dipolar couplings or cross terms with them; ideal excitation.</source>
        <translation>Nur Zentralübergang, in zweiter Ordnung, mit Anisotropie der chemischen Verschiebung: keine Satelliten, keine Dipolkopplungen oder Kreuzterme mit ihnen; ideale Anregung.</translation>
    </message>
    <message>
        <source>the powder spectrum</source>
        <translation>das Pulverspektrum</translation>
    </message>
    <message>
        <source>3QMAS</source>
        <translation>3QMAS</translation>
    </message>
    <message>
        <source>a complete input computes one site, for all spins of a file are computed as one coupled system: choose one atom</source>
        <translation>eine vollständige Eingabe berechnet einen Platz, denn alle Spins einer Datei werden als ein gekoppeltes System berechnet: ein Atom auswählen</translation>
    </message>
    <message>
        <source>a complete input needs a spinning rate, or a sample at rest</source>
        <translation>eine vollständige Eingabe braucht eine Rotorfrequenz oder eine ruhende Probe</translation>
    </message>
    <message>
        <source>%1 points</source>
        <translation>%1 Punkte</translation>
    </message>
    <message>
        <source>a line width of %1 Hz</source>
        <translation>eine Linienbreite von %1 Hz</translation>
    </message>
    <message>
        <source>a narrower range</source>
        <translation>ein engerer Bereich</translation>
    </message>
    <message>
        <source>%1: %2 points a line width, so that lines are missing or of the wrong height; %3 mends it</source>
        <translation>%1: %2 Punkte je Linienbreite, sodass Linien fehlen oder die falsche Höhe haben; Abhilfe: %3</translation>
    </message>
    <message>
        <source> or </source>
        <translation> oder </translation>
    </message>
    <message>
        <source>%1 of %2 peaks lie outside of the computed range</source>
        <translation>%1 von %2 Peaks liegen außerhalb des berechneten Bereichs</translation>
    </message>
    <message>
        <source>%1 (spin %2)</source>
        <translation>%1 (Spin %2)</translation>
    </message>
    <message>
        <source>The reference of %1 is a placeholder, %2 ppm: positions mean nothing yet, only distances do</source>
        <translation>Die Referenz von %1 ist ein Platzhalter, %2 ppm: Positionen bedeuten noch nichts, nur Abstände</translation>
    </message>
    <message>
        <source> and </source>
        <translation> und </translation>
    </message>
    <message>
        <source>%1: measured lines are quadrupolar powder patterns and look different from the simple lines drawn</source>
        <translation>%1: gemessene Linien sind Quadrupol-Pulverspektren und sehen anders aus als die einfachen gezeichneten Linien</translation>
    </message>
    <message>
        <source>there is no site of %1 among the chosen atoms</source>
        <translation>unter den gewählten Atomen ist kein Platz von %1</translation>
    </message>
    <message>
        <source>%1: calculated with %2, but %3 with %4</source>
        <translation>%1: berechnet mit %2, %3 dagegen mit %4</translation>
    </message>
    <message>
        <source>%1: calculated with %2, but %3 with %4 (--mix-methods takes both)</source>
        <translation>%1: berechnet mit %2, %3 dagegen mit %4 (--mix-methods nimmt beide)</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>option -o: the suffix of &quot;%1&quot; is not one of: .json, .%2</source>
        <translation>Option -o: die Endung von „%1“ ist keine von: .json, .%2</translation>
    </message>
    <message>
        <source>magres-workbench calibrate: %1
</source>
        <translation>magres-workbench calibrate: %1
</translation>
    </message>
    <message>
        <source>magres-workbench calibrate: %1: %2
</source>
        <translation>magres-workbench calibrate: %1: %2
</translation>
    </message>
    <message>
        <source>magres-workbench: %1
</source>
        <translation>magres-workbench: %1
</translation>
    </message>
    <message>
        <source>%1: %2
</source>
        <translation>%1: %2
</translation>
    </message>
    <message>
        <source>Note: %1
</source>
        <translation>Hinweis: %1
</translation>
    </message>
    <message>
        <source>magres-workbench compare: %1
</source>
        <translation>magres-workbench compare: %1
</translation>
    </message>
    <message>
        <source>option -o: the suffix of &quot;%1&quot; is not one of: .txt, .csv, .json, .%2</source>
        <translation>Option -o: die Endung von „%1“ ist keine von: .txt, .csv, .json, .%2</translation>
    </message>
    <message>
        <source>option %1: &quot;%2&quot; is not an NMR nucleus</source>
        <translation>Option %1: „%2“ ist kein NMR-Kern</translation>
    </message>
    <message>
        <source>option --experiment: &quot;%1&quot; names no nucleus, as in 13C=%1</source>
        <translation>Option --experiment: „%1“ nennt keinen Kern wie in 13C=%1</translation>
    </message>
    <message>
        <source>option --experiment: &quot;%1&quot; names no file</source>
        <translation>Option --experiment: „%1“ nennt keine Datei</translation>
    </message>
    <message>
        <source>option --experiment: %1 is given twice</source>
        <translation>Option --experiment: %1 ist zweimal angegeben</translation>
    </message>
    <message>
        <source>option --nucleus: no experiment is of %1</source>
        <translation>Option --nucleus: kein Experiment ist von %1</translation>
    </message>
    <message>
        <source>option %1 is given twice for %2</source>
        <translation>Option %1 ist für %2 zweimal angegeben</translation>
    </message>
    <message>
        <source>option --reference-set: two sets are of %1</source>
        <translation>Option --reference-set: zwei Sätze sind von %1</translation>
    </message>
    <message>
        <source>option %1: &quot;%2&quot; is below 0</source>
        <translation>Option %1: „%2“ liegt unter 0</translation>
    </message>
    <message>
        <source>%1: there are no lines</source>
        <translation>%1: es gibt keine Linien</translation>
    </message>
    <message>
        <source>the report cannot be written: %1</source>
        <translation>der Bericht kann nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>option -o: one EXP was expected, found %1</source>
        <translation>Option -o: ein EXP wurde erwartet, %1 gefunden</translation>
    </message>
    <message>
        <source>the spectrum cannot be put on a page</source>
        <translation>das Spektrum kann nicht auf eine Seite gebracht werden</translation>
    </message>
    <message>
        <source>%1: a spectrum of one dimension was expected</source>
        <translation>%1: ein Spektrum mit einer Dimension wurde erwartet</translation>
    </message>
    <message>
        <source>option --fit-scale needs --fit</source>
        <translation>Option --fit-scale braucht --fit</translation>
    </message>
    <message>
        <source>option --fit needs --experiment</source>
        <translation>Option --fit braucht --experiment</translation>
    </message>
    <message>
        <source>option --mqmas: ridges are those of infinitely fast spinning; leave out %1</source>
        <translation>Option --mqmas: die Grate gelten für unendlich schnelle Rotation; %1 weglassen</translation>
    </message>
    <message>
        <source>option --experiment: the ridges of --mqmas are not compared with a spectrum</source>
        <translation>Option --experiment: die Grate von --mqmas werden nicht mit einem Spektrum verglichen</translation>
    </message>
    <message>
        <source>option --sites-csv needs a 1D spectrum as -o NAME.csv</source>
        <translation>Option --sites-csv braucht ein 1D-Spektrum als -o NAME.csv</translation>
    </message>
    <message>
        <source>options --static and --mas contradict each other</source>
        <translation>die Optionen --static und --mas widersprechen sich</translation>
    </message>
    <message>
        <source>option --mas: a rate of 0 is a sample at rest; give --static</source>
        <translation>Option --mas: eine Rotorfrequenz von 0 ist eine ruhende Probe; --static angeben</translation>
    </message>
    <message>
        <source>option --mas: &quot;%1&quot; is not a rate between 0 and 10000000 Hz, or &quot;infinite&quot;</source>
        <translation>Option --mas: „%1“ ist keine Rotorfrequenz zwischen 0 und 10000000 Hz und nicht „infinite“</translation>
    </message>
    <message>
        <source>option %1: &quot;%2&quot; is not a width between 0 and 1000000000 Hz</source>
        <translation>Option %1: „%2“ ist keine Breite zwischen 0 und 1000000000 Hz</translation>
    </message>
    <message>
        <source>option --frequency: &quot;%1&quot; is not a 1H frequency from 1 to %2 MHz</source>
        <translation>Option --frequency: „%1“ ist keine 1H-Frequenz von 1 bis %2 MHz</translation>
    </message>
    <message>
        <source>option --range: %1 ppm is as far as the frequency itself</source>
        <translation>Option --range: %1 ppm ist so weit weg wie die Frequenz selbst</translation>
    </message>
    <message>
        <source>expected a structure and its energy, as in c1.magres,-12.5 or c1.magres;-12,5, found %1</source>
        <translation>eine Struktur und ihre Energie wurden erwartet, wie in c1.magres,-12.5 oder c1.magres;-12,5, %1 gefunden</translation>
    </message>
    <message>
        <source>%1 has an energy already</source>
        <translation>%1 hat schon eine Energie</translation>
    </message>
    <message>
        <source>%1: there is no energy of %2</source>
        <translation>%1: es gibt keine Energie von %2</translation>
    </message>
    <message>
        <source>option --temperature goes with --energies</source>
        <translation>Option --temperature gehört zu --energies</translation>
    </message>
    <message>
        <source>magres-workbench rank: %1
</source>
        <translation>magres-workbench rank: %1
</translation>
    </message>
    <message>
        <source>option --energies needs the error of calculated shifts (--sigma)</source>
        <translation>Option --energies braucht den Fehler der berechneten chemischen Verschiebungen (--sigma)</translation>
    </message>
    <message>
        <source>option --slope: a slope fitted to each structure would hide how it fits</source>
        <translation>Option --slope: eine an jede Struktur angepasste Steigung würde verdecken, wie gut sie passt</translation>
    </message>
    <message>
        <source>option --sigma: the error of calculated shifts of %1 is needed, as in --sigma %1=5</source>
        <translation>Option --sigma: der Fehler der berechneten chemischen Verschiebungen von %1 ist nötig wie in --sigma %1=5</translation>
    </message>
    <message>
        <source>χ²/dof</source>
        <translation>χ²/dof</translation>
    </message>
    <message>
        <source>p</source>
        <translation>p</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Übereinstimmung</translation>
    </message>
    <message>
        <source>Probability</source>
        <translation>Wahrscheinlichkeit</translation>
    </message>
    <message>
        <source>with σ × 1.5</source>
        <translation>mit σ × 1.5</translation>
    </message>
    <message>
        <source>%1 RMSD, ppm</source>
        <translation>%1-RMSD, ppm</translation>
    </message>
    <message>
        <source>%1 ref., ppm</source>
        <translation>%1-Ref., ppm</translation>
    </message>
    <message>
        <source>%1 pairing</source>
        <translation>%1-Zuordnung</translation>
    </message>
    <message>
        <source>Reference%1, ppm</source>
        <translation>Referenz%1, ppm</translation>
    </message>
    <message>
        <source>Offset%1, ppm</source>
        <translation>Änderung%1, ppm</translation>
    </message>
    <message>
        <source> F1</source>
        <translation> F1</translation>
    </message>
    <message>
        <source>Pairing</source>
        <translation>Zuordnung</translation>
    </message>
    <message>
        <source>this structure was compared with another σ than those in %1</source>
        <translation>diese Struktur wurde mit einem anderen σ verglichen als die in %1</translation>
    </message>
    <message>
        <source>only a part of the structures has energies</source>
        <translation>nur ein Teil der Strukturen hat Energien</translation>
    </message>
    <message>
        <source>this part ranks by other measurements than %1</source>
        <translation>dieser Teil ordnet nach anderen Messungen als %1</translation>
    </message>
    <message>
        <source>this structure was compared with %1, those in %2 with %3</source>
        <translation>diese Struktur wurde mit %1 verglichen, die in %2 mit %3</translation>
    </message>
    <message>
        <source>Note: %L1 points are many; this can take minutes
</source>
        <translation>Hinweis: %L1 Punkte sind viele; das kann Minuten dauern
</translation>
    </message>
    <message>
        <source>option %1 needs --complete</source>
        <translation>Option %1 braucht --complete</translation>
    </message>
    <message>
        <source>option --complete: one nucleus is observed, not several</source>
        <translation>Option --complete: beobachtet wird ein Kern, nicht mehrere</translation>
    </message>
    <message>
        <source>option --complete needs --mas HZ or --static</source>
        <translation>Option --complete braucht --mas HZ oder --static</translation>
    </message>
    <message>
        <source>option --columns: &quot;%1&quot; is not one of: %2</source>
        <translation>Option --columns: „%1“ ist keines von: %2</translation>
    </message>
    <message>
        <source>magres-workbench table: %1
</source>
        <translation>magres-workbench table: %1
</translation>
    </message>
    <message>
        <source>Spectra and peak lists (%1)</source>
        <translation>Spektren und Peaklisten (%1)</translation>
    </message>
    <message>
        <source>%1 peaks were picked from the spectrum.</source>
        <translation>Im Spektrum wurden %1 Peaks gefunden.</translation>
    </message>
    <message>
        <source>CSDM</source>
        <translation>CSDM</translation>
    </message>
    <message>
        <source>axes, peaks, parameters</source>
        <translation>Achsen, Peaks, Parameter</translation>
    </message>
    <message>
        <source>data points</source>
        <translation>Datenpunkte</translation>
    </message>
    <message>
        <source>%1 MHz</source>
        <translation>%1 MHz</translation>
    </message>
    <message>
        <source>%1 points from %2 to %3 ppm, %4 ppm apart</source>
        <translation>%1 Punkte von %2 bis %3 ppm im Abstand von %4 ppm</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Noise</source>
        <translation>Rauschen</translation>
    </message>
    <message>
        <source>%1 around %2</source>
        <translation>%1 um %2</translation>
    </message>
    <message>
        <source>nucleus unknown</source>
        <translation>Kern unbekannt</translation>
    </message>
    <message>
        <source>%1 picked</source>
        <translation>%1 gefunden</translation>
    </message>
    <message>
        <source>  counted %1 times</source>
        <translation>  %1-mal gezählt</translation>
    </message>
    <message>
        <source>%1 more</source>
        <translation>%1 weitere</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>a site has no number called &quot;%1&quot;</source>
        <translation>ein Platz hat keine Zahl namens „%1“</translation>
    </message>
    <message>
        <source>expected a reference set, as calibrate writes it</source>
        <translation>ein Referenzsatz wurde erwartet, wie ihn calibrate schreibt</translation>
    </message>
    <message>
        <source>a single column of numbers without a name: intensities have no axis here; if these are positions of peaks, say so in a header line &quot;ppm&quot;</source>
        <translation>eine einzelne Spalte von Zahlen ohne Namen: Intensitäten haben hier keine Achse; wenn es Positionen von Peaks sind, gehört eine Kopfzeile „ppm“ darüber</translation>
    </message>
    <message>
        <source>Column &quot;%1&quot; was taken as the intensity.</source>
        <translation>Die Spalte „%1“ wurde als Intensität genommen.</translation>
    </message>
    <message>
        <source>Commas were taken to separate positions and heights, so that %1 is a peak at %2; if they are decimal commas, a header line &quot;ppm&quot; tells so.</source>
        <translation>Kommas wurden als Trennung von Position und Höhe genommen, sodass %1 ein Peak bei %2 ist; wenn es Dezimalkommas sind, sagt das eine Kopfzeile „ppm“.</translation>
    </message>
    <message>
        <source>Counts are told of %1 of the %2 peaks: they were not used.</source>
        <translation>Anzahlen sind für %1 der %2 Peaks angegeben: Sie wurden nicht verwendet.</translation>
    </message>
    <message>
        <source>Peaks without a height (%1) were given the height 1.</source>
        <translation>Peaks ohne Höhe (%1) bekamen die Höhe 1.</translation>
    </message>
    <message>
        <source>there is nothing to draw</source>
        <translation>es gibt nichts zu zeichnen</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Vermilion</source>
        <translation>Zinnoberrot</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Purple</source>
        <translation>Purpur</translation>
    </message>
    <message>
        <source>Orange</source>
        <translation>Orange</translation>
    </message>
    <message>
        <source>Sky blue</source>
        <translation>Himmelblau</translation>
    </message>
    <message>
        <source>Black</source>
        <translation>Schwarz</translation>
    </message>
    <message>
        <source>%1 frequency from 0 ppm / Hz</source>
        <translation>%1 Frequenz relativ zu 0 ppm / Hz</translation>
    </message>
    <message>
        <source>%1, %2 Hz</source>
        <translation>%1, %2 Hz</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: &quot;%2&quot; is no number</source>
        <translation>„%1“: „%2“ ist keine Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: the numbers are iso, aniso, eta, eq, etaq and cq</source>
        <translation>„%1“: die Zahlen sind iso, aniso, eta, eq, etaq und cq</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: a range of labels has two ends, as in C2..C10</source>
        <translation>„%1“: ein Bereich von Bezeichnungen hat zwei Enden wie in C2..C10</translation>
    </message>
    <message>
        <source>a Bruker folder was expected, in which %1 lies beside the data</source>
        <translation>erwartet wurde ein Bruker-Ordner, in dem %1 neben den Daten liegt</translation>
    </message>
    <message>
        <source>there is no %1 beside the data in %2</source>
        <translation>neben den Daten in %2 gibt es kein %1</translation>
    </message>
    <message>
        <source>this is an archive: unpack it and choose the folder or the file in it</source>
        <translation>dies ist ein Archiv: auspacken und den Ordner oder die Datei darin wählen</translation>
    </message>
    <message>
        <source>the points of the spectrum are not evenly spaced</source>
        <translation>die Punkte des Spektrums liegen nicht in gleichen Abständen</translation>
    </message>
    <message>
        <source>the spectrum that begins here has no table (X++(Y..Y)) or (XY..XY)</source>
        <translation>das Spektrum, das hier beginnt, hat keine Tabelle (X++(Y..Y)) oder (XY..XY)</translation>
    </message>
    <message>
        <source>Label and index stand together in %1 records (the first one: %2 in line %3); they were taken apart, each in the only way that names an atom of the file.</source>
        <translation>Bezeichnung und Index stehen in %1 Einträgen zusammen (der erste: %2 in Zeile %3); sie wurden getrennt, jeweils auf die einzige Art, die ein Atom der Datei benennt.</translation>
    </message>
    <message>
        <source>There is no block [%1].</source>
        <translation>Es gibt keinen Block [%1].</translation>
    </message>
    <message>
        <source>The block [%1] that begins in line %2 is not closed where [%3] begins in line %4, which was therefore read as a part of it.</source>
        <translation>Der Block [%1], der in Zeile %2 beginnt, ist nicht geschlossen, wo in Zeile %4 [%3] beginnt, das deshalb als Teil von ihm gelesen wurde.</translation>
    </message>
    <message>
        <source>The block [%1] that begins in line %2 is not closed: the file may have been cut off.</source>
        <translation>Der Block [%1], der in Zeile %2 beginnt, ist nicht geschlossen: die Datei ist vielleicht abgeschnitten.</translation>
    </message>
    <message>
        <source>There are %1 blocks [atoms]: the atoms of all of them were read as one structure.</source>
        <translation>Es gibt %1 Blöcke [atoms]: die Atome aller wurden als eine Struktur gelesen.</translation>
    </message>
    <message>
        <source>Atoms of a species that is no element or has no isotopes with a spin: %1 (the first one %2). They are missing in spectra.</source>
        <translation>Atome einer Spezies, die kein Element ist oder keine Isotope mit Spin hat: %1 (das erste %2). Sie fehlen in Spektren.</translation>
    </message>
    <message>
        <source>Labels with characters beyond Latin-1, each of which is read as a question mark: %1 (the first one %2). They may not be told apart.</source>
        <translation>Bezeichnungen mit Zeichen außerhalb von Latin-1, die alle als Fragezeichen gelesen werden: %1 (die erste %2). Sie lassen sich vielleicht nicht unterscheiden.</translation>
    </message>
    <message>
        <source>Atoms with the label and index of another one: %1 (the first one %2). Their tensors cannot be told apart.</source>
        <translation>Atome mit Bezeichnung und Index eines anderen: %1 (das erste %2). Ihre Tensoren lassen sich nicht unterscheiden.</translation>
    </message>
    <message>
        <source>There is neither a shielding (ms) nor an electric-field gradient (efg).</source>
        <translation>Es gibt weder eine Abschirmung (ms) noch einen elektrischen Feldgradienten (efg).</translation>
    </message>
    <message>
        <source>Tensors that belong to no atom of the file: %1 (the first one %2).</source>
        <translation>Tensoren, die zu keinem Atom der Datei gehören: %1 (der erste %2).</translation>
    </message>
    <message>
        <source>Tensors that do not reach the atom that they name: %1 (the first one %2). The block [atoms] has to stand before [magres], and an index without a sign or leading zeros.</source>
        <translation>Tensoren, die nicht zu dem Atom gelangen, das sie nennen: %1 (der erste %2). Der Block [atoms] muss vor [magres] stehen und ein Index ohne Vorzeichen und führende Nullen.</translation>
    </message>
    <message>
        <source>%3: %1 of %2 (the first one %4)</source>
        <translation>%3: %1 von %2 (das erste %4)</translation>
    </message>
    <message>
        <source>Atoms with more than one %1. Of their tensors the one that compares lowest, element by element, counts.</source>
        <translation>Atome mit mehr als einem %1. Von ihren Tensoren zählt der, der beim Vergleich Element für Element der kleinste ist.</translation>
    </message>
    <message>
        <source>Atoms without %1.</source>
        <translation>Atome ohne %1.</translation>
    </message>
    <message>
        <source>%1 has none, taken as %2</source>
        <translation>%1 hat keine, als %2 gelesen</translation>
    </message>
    <message>
        <source>%1 in %2, taken as %3</source>
        <translation>%1 in %2, als %3 gelesen</translation>
    </message>
    <message>
        <source>Units that were not checked: %1.</source>
        <translation>Nicht geprüfte Einheiten: %1.</translation>
    </message>
    <message>
        <source>a MAGRES file begins with a line #$magres-abinitio-v1.0</source>
        <translation>eine MAGRES-Datei beginnt mit einer Zeile #$magres-abinitio-v1.0</translation>
    </message>
    <message>
        <source>%1, this one with a byte order mark: save it as plain text without one (in UTF-8 or ASCII)</source>
        <translation>%1, diese mit einer Bytereihenfolge-Markierung: als einfachen Text ohne sie speichern (in UTF-8 oder ASCII)</translation>
    </message>
    <message>
        <source>%1, in this one blanks or empty lines stand before it: remove them</source>
        <translation>%1, in dieser stehen Leerzeichen oder leere Zeilen davor: diese entfernen</translation>
    </message>
    <message>
        <source>%1; this is the output of an older version of the program, from before the format had blocks: calculate with a newer one, or convert the file</source>
        <translation>%1; dies ist die Ausgabe einer älteren Version des Programms, aus der Zeit, bevor das Format Blöcke hatte: mit einer neueren rechnen oder die Datei umwandeln</translation>
    </message>
    <message>
        <source>%1, this one with %2: if the line was lost, put it back</source>
        <translation>%1, diese mit %2: wenn die Zeile verloren ging, wieder einsetzen</translation>
    </message>
    <message>
        <source>The lines end in a carriage return alone; they were read as lines all the same.</source>
        <translation>Die Zeilen enden nur mit einem Wagenrücklauf; sie wurden trotzdem als Zeilen gelesen.</translation>
    </message>
    <message>
        <source>JCAMP-DX</source>
        <translation>JCAMP-DX</translation>
    </message>
    <message>
        <source>a row has %1 fields: a position and an intensity a line were expected</source>
        <translation>eine Zeile hat %1 Felder: erwartet wurden eine Position und eine Intensität je Zeile</translation>
    </message>
    <message>
        <source>the repaired copy cannot be written (%1)</source>
        <translation>die reparierte Kopie kann nicht geschrieben werden (%1)</translation>
    </message>
    <message>
        <source>option --correlation goes with --nucleus-f1</source>
        <translation>Option --correlation gehört zu --nucleus-f1</translation>
    </message>
    <message>
        <source>option --sigma: the error of calculated shifts of %1 is needed, as in --sigma %1=5: differences of both dimensions are weighed by it</source>
        <translation>Option --sigma: der Fehler der berechneten chemischen Verschiebungen von %1 ist nötig wie in --sigma %1=5: die Differenzen beider Dimensionen werden mit ihm gewichtet</translation>
    </message>
    <message>
        <source>option --complete: it completes an input of SIMPSON, not of mrsimulator</source>
        <translation>Option --complete: sie vervollständigt eine Eingabe von SIMPSON, nicht von mrsimulator</translation>
    </message>
    <message>
        <source>A dimension names no unit: its small numbers were taken as ratios, of which 1e-6 is 1 ppm.</source>
        <translation>Eine Dimension nennt keine Einheit: ihre kleinen Zahlen wurden als Verhältnisse genommen, 1e-6 ist 1 ppm.</translation>
    </message>
    <message>
        <source>this is a calculation (MAGRES), a measurement was expected</source>
        <translation>das ist eine Rechnung (MAGRES), erwartet wurde eine Messung</translation>
    </message>
    <message>
        <source>X values in Hz need the record ##.OBSERVE FREQUENCY=, or the frequency of 0 ppm in MHz must be given</source>
        <translation>X-Werte in Hz brauchen den Eintrag ##.OBSERVE FREQUENCY=, oder die Frequenz von 0 ppm in MHz muss angegeben werden</translation>
    </message>
    <message>
        <source>Positions beyond %1 ppm are rare: if these are Hz, the unit and the frequency must be given.</source>
        <translation>Positionen jenseits von %1 ppm sind selten: wenn es Hz sind, müssen Einheit und Frequenz angegeben werden.</translation>
    </message>
    <message>
        <source>text of a publication</source>
        <translation>Text einer Veröffentlichung</translation>
    </message>
    <message>
        <source>expected a shift such as 7.26 or 7.26 (2H), found %1</source>
        <translation>eine Verschiebung wie 7.26 oder 7.26 (2H) wurde erwartet, gefunden wurde %1</translation>
    </message>
    <message>
        <source>there is more than one list of shifts: each needs a file of its own</source>
        <translation>es gibt mehr als eine Liste von Verschiebungen: jede braucht eine eigene Datei</translation>
    </message>
    <message>
        <source>Read as the list of %1 shifts of a publication.</source>
        <translation>Als Liste von %1 Verschiebungen einer Veröffentlichung gelesen.</translation>
    </message>
    <message>
        <source>Ranges of shifts were replaced by their middles.</source>
        <translation>Bereiche von Verschiebungen wurden durch ihre Mitte ersetzt.</translation>
    </message>
    <message>
        <source>What follows the full stop was left out: %1.</source>
        <translation>Was auf den Punkt am Satzende folgt, wurde weggelassen: %1.</translation>
    </message>
    <message>
        <source>Errors of the positions were left out.</source>
        <translation>Fehler der Positionen wurden weggelassen.</translation>
    </message>
    <message>
        <source>The positions are rounded by more than their step, or one is missing: a straight line was laid through them.</source>
        <translation>Die Positionen sind um mehr als ihren Schritt gerundet, oder eine fehlt: es wurde eine Gerade durch sie gelegt.</translation>
    </message>
    <message>
        <source>the cross peak at %1 is assigned to &quot;%2&quot;, but the structure has no such site (--ignore-labels pairs without names)</source>
        <translation>der Kreuzpeak bei %1 ist &quot;%2&quot; zugeordnet, aber die Struktur hat keinen solchen Platz (--ignore-labels paart ohne Namen)</translation>
    </message>
    <message>
        <source>the cross peak at %1 is assigned to &quot;%2&quot;, but the structure has %3 cross peaks of that name (--ignore-labels pairs without names)</source>
        <translation>der Kreuzpeak bei %1 ist &quot;%2&quot; zugeordnet, aber die Struktur hat %3 Kreuzpeaks dieses Namens (--ignore-labels paart ohne Namen)</translation>
    </message>
    <message>
        <source>two cross peaks, at %1 and %2 ppm of F2, are assigned to %3 and %4</source>
        <translation>zwei Kreuzpeaks, bei %1 und %2 ppm in F2, sind %3 und %4 zugeordnet</translation>
    </message>
    <message>
        <source>a whole number from %1 to %2</source>
        <translation>eine ganze Zahl von %1 bis %2</translation>
    </message>
    <message>
        <source>The comma in ##%1= %2 was taken for a decimal point.</source>
        <translation>Das Komma in ##%1= %2 wurde als Dezimalkomma gelesen.</translation>
    </message>
    <message>
        <source>The record ##LASTX= is missing: the axis follows from ##DELTAX=.</source>
        <translation>Der Eintrag ##LASTX= fehlt: Die Achse folgt aus ##DELTAX=.</translation>
    </message>
    <message>
        <source>the record ##NPOINTS= is missing, and of the %1 points that the table holds the one here would lie at %2, not at %3 as the line says</source>
        <translation>der Eintrag ##NPOINTS= fehlt, und von den %1 Punkten der Tabelle läge dieser bei %2, nicht bei %3, wie die Zeile sagt</translation>
    </message>
    <message>
        <source>The record ##NPOINTS= is missing: the %1 points of the table were counted.</source>
        <translation>Der Eintrag ##NPOINTS= fehlt: Die %1 Punkte der Tabelle wurden gezählt.</translation>
    </message>
    <message>
        <source>by ##DELTAX= this line begins at X = %1, it says %2</source>
        <translation>nach ##DELTAX= beginnt diese Zeile bei X = %1, sie sagt %2</translation>
    </message>
    <message>
        <source>Largest principal shift: reference + slope · σ(ii), with δ11 ≥ δ22 ≥ δ33.</source>
        <translation>Größte Hauptverschiebung: Referenz + Steigung · σ(ii), mit δ11 ≥ δ22 ≥ δ33.</translation>
    </message>
    <message>
        <source>Middle principal shift: reference + slope · σ(ii), with δ11 ≥ δ22 ≥ δ33.</source>
        <translation>Mittlere Hauptverschiebung: Referenz + Steigung · σ(ii), mit δ11 ≥ δ22 ≥ δ33.</translation>
    </message>
    <message>
        <source>Smallest principal shift: reference + slope · σ(ii), with δ11 ≥ δ22 ≥ δ33.</source>
        <translation>Kleinste Hauptverschiebung: Referenz + Steigung · σ(ii), mit δ11 ≥ δ22 ≥ δ33.</translation>
    </message>
    <message>
        <source>Span of the shift tensor: Ω = δ11 − δ33 (Herzfeld–Berger).</source>
        <translation>Spannweite des Verschiebungstensors: Ω = δ11 − δ33 (Herzfeld–Berger).</translation>
    </message>
    <message>
        <source>Skew of the shift tensor: κ = 3 (δ22 − δiso) / Ω, from −1 to 1 (Herzfeld–Berger).</source>
        <translation>Schiefe des Verschiebungstensors: κ = 3 (δ22 − δiso) / Ω, von −1 bis 1 (Herzfeld–Berger).</translation>
    </message>
    <message>
        <source>Quadrupolar coupling constant with the sign of Vzz: Cq = Vzz · Q · 2.3489 (Vzz in a.u., Q in fm²), |Vzz| ≥ |Vyy| ≥ |Vxx|.</source>
        <translation>Quadrupolkopplungskonstante mit dem Vorzeichen von Vzz: Cq = Vzz · Q · 2,3489 (Vzz in a. u., Q in fm²), |Vzz| ≥ |Vyy| ≥ |Vxx|.</translation>
    </message>
    <message>
        <source>Quadrupolar product: P(Q) = |Cq| · √(1 + η²/3).</source>
        <translation>Quadrupolprodukt: P(Q) = |Cq| · √(1 + η²/3).</translation>
    </message>
    <message>
        <source>Quadrupole induced shift of the central transition at the Larmor frequency ν: −3/40 · (P(Q)/ν)² · (I(I+1) − 3/4) / (I²(2I−1)²) · 10⁶, with P(Q)² = Cq² (1 + η²/3).</source>
        <translation>Quadrupolinduzierte Verschiebung des Zentralübergangs bei der Larmorfrequenz ν: −3/40 · (P(Q)/ν)² · (I(I+1) − 3/4) / (I²(2I−1)²) · 10⁶, mit P(Q)² = Cq² (1 + η²/3).</translation>
    </message>
    <message>
        <source>Number of atoms in the cell that the space group maps onto each other.</source>
        <translation>Zahl der Atome in der Zelle, die die Raumgruppe aufeinander abbildet.</translation>
    </message>
    <message>
        <source>Fractional coordinate along a; not brought into the cell.</source>
        <translation>Fraktionelle Koordinate entlang a; nicht in die Zelle gebracht.</translation>
    </message>
    <message>
        <source>Fractional coordinate along b; not brought into the cell.</source>
        <translation>Fraktionelle Koordinate entlang b; nicht in die Zelle gebracht.</translation>
    </message>
    <message>
        <source>Fractional coordinate along c; not brought into the cell.</source>
        <translation>Fraktionelle Koordinate entlang c; nicht in die Zelle gebracht.</translation>
    </message>
    <message>
        <source>Reference %1 ppm, slope %2: %3</source>
        <translation>Referenz %1 ppm, Steigung %2: %3</translation>
    </message>
    <message>
        <source>placeholders, only differences mean something</source>
        <translation>Platzhalter, nur Differenzen bedeuten etwas</translation>
    </message>
    <message>
        <source>%1 at %2 MHz, where 1H is at %3 MHz</source>
        <translation>%1 bei %2 MHz, wo 1H bei %3 MHz liegt</translation>
    </message>
    <message>
        <source>`%1` pairs different numbers of lines and sites.</source>
        <translation>`%1` paart auch verschieden viele Linien und Plätze.</translation>
    </message>
    <message>
        <source>of %1</source>
        <translation>von %1</translation>
    </message>
    <message>
        <source>option --reference-set: it goes behind the command</source>
        <translation>Option --reference-set: sie gehört hinter den Befehl</translation>
    </message>
    <message>
        <source>%1: the %2 lines lie at %3 places, which were compared</source>
        <translation>%1: die %2 Linien liegen an %3 Stellen, die verglichen wurden</translation>
    </message>
    <message>
        <source>%1 and %2 more: %3</source>
        <translation>%1 und %2 weitere: %3</translation>
    </message>
    <message>
        <source>The five columns were taken as number, point, Hz, ppm and height of the peaks.</source>
        <translation>Die fünf Spalten wurden als Nummer, Punkt, Hz, ppm und Höhe der Peaks genommen.</translation>
    </message>
    <message>
        <source>the numbers of the only line are shifts</source>
        <translation>die Zahlen der einzigen Zeile sind Verschiebungen</translation>
    </message>
    <message>
        <source>PDF document</source>
        <translation>PDF-Dokument</translation>
    </message>
    <message>
        <source>SVG image</source>
        <translation>SVG-Bild</translation>
    </message>
    <message>
        <source>PNG image</source>
        <translation>PNG-Bild</translation>
    </message>
    <message>
        <source>Comma-separated values</source>
        <translation>Kommagetrennte Werte</translation>
    </message>
    <message>
        <source>JSON</source>
        <translation>JSON</translation>
    </message>
    <message>
        <source>the sites of %1 more structures are doubtful (see their messages)</source>
        <translation>die Plätze von %1 weiteren Strukturen sind zweifelhaft (siehe deren Meldungen)</translation>
    </message>
    <message>
        <source>the structures have %1 to %2 sites, each of which counts once</source>
        <translation>die Strukturen haben %1 bis %2 Plätze, von denen jeder einmal zählt</translation>
    </message>
    <message>
        <source>%1 (and %2 more)</source>
        <translation>%1 (und %2 weitere)</translation>
    </message>
    <message>
        <source>%1 (--ignore-labels pairs without names)</source>
        <translation>%1 (--ignore-labels paart ohne Namen)</translation>
    </message>
    <message>
        <source>by its count the line at %1 ppm stands for %2 nuclei, but the sites that it names have %3</source>
        <translation>nach ihrer Anzahl steht die Linie bei %1 ppm für %2 Kerne, die Plätze, die sie nennt, haben aber %3</translation>
    </message>
    <message>
        <source>%1 χ²/dof</source>
        <translation>%1 χ²/dof</translation>
    </message>
    <message>
        <source>%1 p</source>
        <translation>%1 p</translation>
    </message>
    <message>
        <source>none of the columns %1 is named as that of the positions: a name such as &quot;ppm&quot; or &quot;δ&quot; in the header line tells which one it is</source>
        <translation>keine der Spalten %1 heißt nach den Positionen: ein Name wie „ppm“ oder „δ“ in der Kopfzeile sagt, welche es ist</translation>
    </message>
    <message>
        <source>The column without a name was taken as the intensity.</source>
        <translation>Die Spalte ohne Namen wurde als Intensität genommen.</translation>
    </message>
    <message>
        <source>the commas may be decimal marks or stand between X and Y: ##NPOINTS= %1 or %2 tells which</source>
        <translation>die Kommas können Dezimalzeichen sein oder zwischen X und Y stehen: ##NPOINTS= %1 oder %2 sagt, was gilt</translation>
    </message>
    <message>
        <source>The commas in ##%1= were taken for decimal points.</source>
        <translation>Die Kommas in ##%1= wurden als Dezimalpunkte gelesen.</translation>
    </message>
    <message>
        <source>The file holds %1 spectra and lists of peaks: only &quot;%2&quot; was read.</source>
        <translation>Die Datei enthält %1 Spektren und Peaklisten: nur „%2“ wurde gelesen.</translation>
    </message>
    <message>
        <source>expected %1 fields as in the lines below, found %2; if this is a title, begin it with #</source>
        <translation>%1 Felder wie in den Zeilen darunter wurden erwartet, %2 gefunden; eine Überschrift muss mit # beginnen</translation>
    </message>
    <message>
        <source>Lines above the table that were passed over (%1): %2.</source>
        <translation>Zeilen über der Tabelle, die übergangen wurden (%1): %2.</translation>
    </message>
    <message>
        <source>lines that begin with &quot;;&quot; are comments: an empty first column must be taken away</source>
        <translation>Zeilen, die mit „;“ beginnen, sind Kommentare: eine leere erste Spalte muss entfernt werden</translation>
    </message>
    <message>
        <source>expected a number, found %1; if this is a title, begin it with #</source>
        <translation>eine Zahl wurde erwartet, %1 gefunden; eine Überschrift muss mit # beginnen</translation>
    </message>
    <message>
        <source>Numbers behind the symbols of elements were taken as those of the atoms.</source>
        <translation>Zahlen hinter den Elementsymbolen wurden als die der Atome genommen.</translation>
    </message>
    <message>
        <source>the table lies on its side, one peak a line was expected</source>
        <translation>die Tabelle liegt auf der Seite, erwartet wurde ein Peak je Zeile</translation>
    </message>
    <message>
        <source>%1 names of columns stand above rows of %2 fields</source>
        <translation>%1 Spaltennamen stehen über Zeilen mit %2 Feldern</translation>
    </message>
    <message>
        <source>##DELTAX= tells steps of %1 where ##FIRSTX= and ##LASTX= give %2, which was taken.</source>
        <translation>##DELTAX= nennt Schritte von %1, wo ##FIRSTX= und ##LASTX= %2 ergeben, was genommen wurde.</translation>
    </message>
    <message>
        <source>the block that begins here holds the imaginary part alone</source>
        <translation>der Block, der hier beginnt, enthält nur den Imaginärteil</translation>
    </message>
    <message>
        <source>Of the %1 spectra of the file the first one was taken.</source>
        <translation>Von den %1 Spektren der Datei wurde das erste genommen.</translation>
    </message>
    <message>
        <source>a minus must stand right before its number, and a dash cannot separate columns: found %1</source>
        <translation>ein Minus muss direkt vor seiner Zahl stehen, und ein Strich kann keine Spalten trennen: gefunden %1</translation>
    </message>
    <message>
        <source>%1 was taken as a position with a decimal comma, though other numbers have points; if it names atoms, a header line &quot;Atom,ppm&quot; tells so.</source>
        <translation>%1 wurde als Position mit Dezimalkomma genommen, obwohl andere Zahlen Punkte haben; wenn es Atome benennt, sagt das eine Kopfzeile „Atom,ppm“.</translation>
    </message>
    <message>
        <source>Rows that sum up the table were left out: %1.</source>
        <translation>Zeilen, die die Tabelle zusammenfassen, wurden weggelassen: %1.</translation>
    </message>
    <message>
        <source>option --experiment is given %1 times, but cross peaks and spectra with quadrupolar shifts are compared with one measurement</source>
        <translation>Option --experiment ist %1-mal angegeben, aber Kreuzpeaks und Spektren mit Quadrupolverschiebungen werden mit einer Messung verglichen</translation>
    </message>
    <message>
        <source>option --experiment: &quot;%1&quot; names %2, but --nucleus %3</source>
        <translation>Option --experiment: &quot;%1&quot; nennt %2, aber --nucleus %3</translation>
    </message>
    <message>
        <source>%1 lines are assigned to &quot;%2&quot;, which several sites are called: %3</source>
        <translation>%1 Linien sind &quot;%2&quot; zugeordnet; so heißen aber mehrere Plätze: %3</translation>
    </message>
    <message>
        <source>%1: &quot;%2&quot; may be %3 or %4</source>
        <translation>%1: &quot;%2&quot; kann %3 oder %4 sein</translation>
    </message>
    <message>
        <source>Rows without a shift of %1 (%2) were left out: %3.</source>
        <translation>Zeilen ohne Verschiebung von %1 (%2) wurden weggelassen: %3.</translation>
    </message>
    <message>
        <source>%1 and %2 are equivalent by symmetry (%3), but their field gradients are %4 and %5 atomic units: the site has that of %6</source>
        <translation>%1 und %2 sind durch Symmetrie gleichwertig (%3), doch ihre Feldgradienten sind %4 und %5 atomare Einheiten: Der Platz hat den von %6</translation>
    </message>
    <message>
        <source>Records with &quot;nan&quot; or &quot;inf&quot; for a number: %1 (the first one %2). They count as missing where a spectrum is made.</source>
        <translation>Einträge mit &quot;nan&quot; oder &quot;inf&quot; statt einer Zahl: %1 (der erste %2). Wo ein Spektrum entsteht, gelten sie als fehlend.</translation>
    </message>
    <message>
        <source>%1, in this one that is line %2: remove what stands before it</source>
        <translation>%1, in dieser ist das Zeile %2: Entfernen Sie, was davor steht</translation>
    </message>
    <message>
        <source>%1, this one is compressed (gzip): unpack it</source>
        <translation>%1, diese ist komprimiert (gzip): Entpacken Sie sie</translation>
    </message>
    <message>
        <source>points are %1 ppm apart, too far for the line of %2: it takes more points, or a narrower range</source>
        <translation>Punkte liegen %1 ppm auseinander, zu weit für die Linie von %2: Es braucht mehr Punkte oder einen engeren Bereich</translation>
    </message>
    <message>
        <source>%1 lines, from %2 to %3 ppm, are assigned to the site %4, which gives one line: the names in the list are not those of the structure</source>
        <translation>%1 Linien von %2 bis %3 ppm sind dem Platz %4 zugeordnet, der eine Linie gibt: Die Namen in der Liste sind nicht die der Struktur</translation>
    </message>
    <message numerus="yes">
        <source>and %n more note(s)</source>
        <translation>
            <numerusform>und %n weiterer Hinweis</numerusform>
            <numerusform>und %n weitere Hinweise</numerusform>
        </translation>
    </message>
    <message>
        <source>Show Fewer</source>
        <translation>Weniger zeigen</translation>
    </message>
    <message>
        <source>Show All</source>
        <translation>Alle zeigen</translation>
    </message>
    <message>
        <source>option -o: expected the name of a file, found &quot;-&quot;</source>
        <translation>Option -o: erwartet wurde ein Dateiname, gefunden wurde „-“</translation>
    </message>
    <message>
        <source>option -o: &quot;%1&quot; is read by this command</source>
        <translation>Option -o: „%1“ wird von diesem Befehl gelesen</translation>
    </message>
    <message>
        <source>option --columns: &quot;%1&quot; is given twice</source>
        <translation>Option --columns: „%1“ ist zweimal angegeben</translation>
    </message>
    <message>
        <source>option %1 needs --unique</source>
        <translation>Option %1 braucht --unique</translation>
    </message>
    <message>
        <source>no plug-in that reads MAGRES files is loaded</source>
        <translation>kein Plug-in ist geladen, das MAGRES-Dateien liest</translation>
    </message>
    <message>
        <source>%1 lines were measured, but the structure has only %2 sites for them: %3 would have to be left out</source>
        <translation>%1 Linien wurden gemessen, aber die Struktur hat nur %2 Plätze dafür: %3 müssten weggelassen werden</translation>
    </message>
    <message>
        <source>it is a device or a pipe</source>
        <translation>es ist ein Gerät oder eine Pipe</translation>
    </message>
    <message>
        <source>%1: calculated with %2, but the reference set of %3 with %4</source>
        <translation>%1: mit %2 berechnet, der Referenzsatz von %3 aber mit %4</translation>
    </message>
    <message>
        <source>%1 was measured at %2 MHz, but the spectrum is computed for %3 MHz: lines of quadrupolar nuclei and sidebands lie elsewhere</source>
        <translation>%1 wurde bei %2 MHz gemessen, das Spektrum wird aber für %3 MHz berechnet: Linien von Quadrupolkernen und Seitenbänder liegen anderswo</translation>
    </message>
    <message>
        <source>%1 is a spectrum of other nuclei or dimensions than what is simulated here: its positions mean nothing on these axes</source>
        <translation>%1 ist ein Spektrum anderer Kerne oder Dimensionen als das hier simulierte: seine Positionen bedeuten auf diesen Achsen nichts</translation>
    </message>
    <message>
        <source>%1 is a list of cross peaks: only their F2 positions are drawn on this axis</source>
        <translation>%1 ist eine Liste von Kreuzpeaks: auf dieser Achse sind nur ihre F2-Positionen gezeichnet</translation>
    </message>
</context>
<context>
    <name>Workbench::AgreementPlot</name>
    <message>
        <source>%1: %2, RMSD %3 ppm</source>
        <translation>%1: %2, RMSD %3 ppm</translation>
    </message>
    <message>
        <source>Measured, ppm</source>
        <translation>Gemessen, ppm</translation>
    </message>
    <message>
        <source>Calculated, ppm</source>
        <translation>Berechnet, ppm</translation>
    </message>
    <message>
        <source>Difference, ppm</source>
        <translation>Differenz, ppm</translation>
    </message>
    <message>
        <source>Measured</source>
        <translation>Gemessen</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation>Differenz</translation>
    </message>
</context>
<context>
    <name>Workbench::CompareCommands</name>
    <message>
        <source>Reference Se&amp;t...</source>
        <translation>Referen&amp;zsatz...</translation>
    </message>
    <message>
        <source>Co&amp;mpare...</source>
        <translation>&amp;Vergleichen...</translation>
    </message>
    <message>
        <source>Pairs the lines of a measurement with the sites of a structure, whatever their numbers</source>
        <translation>Ordnet die Linien einer Messung den Plätzen einer Struktur zu, gleich wie viele es sind</translation>
    </message>
    <message>
        <source>Compare</source>
        <translation>Vergleichen</translation>
    </message>
    <message>
        <source>Ctrl+Shift+C</source>
        <translation>Ctrl+Shift+C</translation>
    </message>
    <message>
        <source>Ra&amp;nk Structures...</source>
        <translation>Strukturen or&amp;dnen...</translation>
    </message>
    <message>
        <source>Which of many structures fits the measured lines best, and how surely</source>
        <translation>Welche von vielen Strukturen am besten zu den gemessenen Linien passt, und wie sicher</translation>
    </message>
    <message>
        <source>There is no measurement in one dimension: add a spectrum or a peak list</source>
        <translation>Es gibt keine Messung in einer Dimension: ein Spektrum oder eine Peakliste hinzufügen</translation>
    </message>
    <message>
        <source>Rank Structures</source>
        <translation>Strukturen ordnen</translation>
    </message>
    <message>
        <source>Ctrl+Shift+R</source>
        <translation>Ctrl+Shift+R</translation>
    </message>
    <message>
        <source>Reference and slope from a set that the command calibrate has written</source>
        <translation>Referenz und Steigung aus einem Satz, den der Befehl calibrate geschrieben hat</translation>
    </message>
    <message>
        <source>This structure is no longer on the page</source>
        <translation>Diese Struktur ist nicht mehr auf der Seite</translation>
    </message>
    <message>
        <source>Reference Set</source>
        <translation>Referenzsatz</translation>
    </message>
    <message>
        <source>Reference sets (*.json);;All files (*)</source>
        <translation>Referenzsätze (*.json);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>%1: new spectra and comparisons start with reference %2 ppm and slope %3 (%4)</source>
        <translation>%1: neue Spektren und Vergleiche beginnen mit der Referenz %2 ppm und der Steigung %3 (%4)</translation>
    </message>
    <message>
        <source>%1 is no reference set</source>
        <translation>%1 ist kein Referenzsatz</translation>
    </message>
    <message>
        <source>Compare pairs any numbers of lines and sites: it is in the tool bar and in the menu Spectrum.</source>
        <translation>Vergleichen ordnet beliebig viele Linien und Plätze einander zu: es steht in der Werkzeugleiste und im Menü Spektrum.</translation>
    </message>
    <message>
        <source>Forget Reference Sets</source>
        <translation>Referenzsätze vergessen</translation>
    </message>
    <message>
        <source>New spectra and comparisons no longer start with reference and slope of a set</source>
        <translation>Neue Spektren und Vergleiche beginnen nicht mehr mit Referenz und Steigung eines Satzes</translation>
    </message>
    <message>
        <source>%1: new spectra and comparisons no longer start with a set</source>
        <translation>%1: neue Spektren und Vergleiche beginnen nicht mehr mit einem Satz</translation>
    </message>
</context>
<context>
    <name>Workbench::ComparePanel</name>
    <message>
        <source>Every line names its sites</source>
        <translation>Jede Linie nennt ihre Plätze</translation>
    </message>
    <message>
        <source>As many lines as sites, or as atoms: paired by their order</source>
        <translation>So viele Linien wie Plätze oder wie Atome: nach ihrer Reihenfolge zugeordnet</translation>
    </message>
    <message>
        <source>Fewer lines than sites: neighbouring sites share a line so that the sum of squared differences is least</source>
        <translation>Weniger Linien als Plätze: benachbarte Plätze teilen sich eine Linie, sodass die Summe der Differenzquadrate am kleinsten ist</translation>
    </message>
    <message>
        <source>More lines than sites: some are left out so that the sum of squares is least</source>
        <translation>Mehr Linien als Plätze: einige werden weggelassen, sodass die Summe der Quadrate am kleinsten ist</translation>
    </message>
    <message>
        <source>Compare</source>
        <translation>Vergleichen</translation>
    </message>
    <message>
        <source>no groups</source>
        <translation>keine Gruppen</translation>
    </message>
    <message>
        <source>CH3</source>
        <translation>CH3</translation>
    </message>
    <message>
        <source>XH3</source>
        <translation>XH3</translation>
    </message>
    <message>
        <source>Groups of three hydrogens that turn fast enough to give one line</source>
        <translation>Gruppen aus drei Wasserstoffatomen, die sich schnell genug drehen, um eine einzige Linie zu geben</translation>
    </message>
    <message>
        <source>fixed</source>
        <translation>fest</translation>
    </message>
    <message>
        <source>fitted</source>
        <translation>angepasst</translation>
    </message>
    <message>
        <source>Of the shift over the shielding. A fitted slope takes a part of the differences away: give one that is known from a calibration where you can</source>
        <translation>Der chemischen Verschiebung über der Abschirmung. Eine angepasste Steigung nimmt einen Teil der Differenzen weg: nach Möglichkeit eine aus einer Kalibrierung bekannte angeben</translation>
    </message>
    <message>
        <source>Fitted: least squares, each site weighted with its nuclei</source>
        <translation>Angepasst: kleinste Quadrate, jeder Platz mit der Zahl seiner Kerne gewichtet</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
    <message>
        <source> ppm</source>
        <translation> ppm</translation>
    </message>
    <message>
        <source>Root mean square error of calculated shifts of this nucleus: without it there is no χ² and no probability</source>
        <translation>Wurzel des mittleren quadratischen Fehlers der berechneten chemischen Verschiebungen dieses Kerns: ohne ihn gibt es kein χ² und keine Wahrscheinlichkeit</translation>
    </message>
    <message>
        <source>So many lines may be left out where more were measured than there are sites</source>
        <translation>So viele Linien dürfen weggelassen werden, wenn mehr gemessen wurden, als es Plätze gibt</translation>
    </message>
    <message>
        <source>S&amp;tructure:</source>
        <translation>Str&amp;uktur:</translation>
    </message>
    <message>
        <source>&amp;Measured:</source>
        <translation>&amp;Gemessen:</translation>
    </message>
    <message>
        <source>&amp;Nucleus:</source>
        <translation>&amp;Kern:</translation>
    </message>
    <message>
        <source>&amp;Average:</source>
        <translation>M&amp;ittelung:</translation>
    </message>
    <message>
        <source>&amp;Reference:</source>
        <translation>&amp;Referenz:</translation>
    </message>
    <message>
        <source>S&amp;lope:</source>
        <translation>St&amp;eigung:</translation>
    </message>
    <message>
        <source>&amp;Error σ:</source>
        <translation>&amp;Fehler σ:</translation>
    </message>
    <message>
        <source>Leave &amp;out:</source>
        <translation>&amp;Weglassen:</translation>
    </message>
    <message>
        <source>There is no structure: open a MAGRES file first</source>
        <translation>Es gibt keine Struktur: zuerst eine MAGRES-Datei öffnen</translation>
    </message>
    <message>
        <source>There is no measurement in one dimension: add a spectrum or a peak list</source>
        <translation>Es gibt keine Messung in einer Dimension: ein Spektrum oder eine Peakliste hinzufügen</translation>
    </message>
    <message>
        <source>As the spectrum says</source>
        <translation>Wie im Spektrum angegeben</translation>
    </message>
    <message>
        <source>The peak list does not say of which nucleus it is</source>
        <translation>Die Peakliste sagt nicht, von welchem Kern sie ist</translation>
    </message>
    <message>
        <source>of the set</source>
        <translation>aus dem Satz</translation>
    </message>
    <message>
        <source>Reference &lt;b&gt;%1 ppm&lt;/b&gt; (%2), slope %3 (%4)</source>
        <translation>Referenz &lt;b&gt;%1 ppm&lt;/b&gt; (%2), Steigung %3 (%4)</translation>
    </message>
    <message>
        <source>Pairing: &lt;b&gt;%1&lt;/b&gt;; %2 lines, %3 sites%4</source>
        <translation>Zuordnung: &lt;b&gt;%1&lt;/b&gt;; %2 Linien, %3 Plätze%4</translation>
    </message>
    <message>
        <source> in %1</source>
        <translation> in %1</translation>
    </message>
    <message>
        <source>RMSD &lt;b&gt;%1 ppm&lt;/b&gt;</source>
        <translation>RMSD &lt;b&gt;%1 ppm&lt;/b&gt;</translation>
    </message>
    <message>
        <source> (paired automatically: %1)</source>
        <translation> (automatisch zugeordnet: %1)</translation>
    </message>
    <message>
        <source>; largest difference %1 (%2)%3</source>
        <translation>; größte Differenz %1 (%2)%3</translation>
    </message>
    <message>
        <source>, RMSD without it %1</source>
        <translation>, RMSD ohne sie %1</translation>
    </message>
    <message>
        <source>χ² %1, %2 degrees of freedom, &lt;b&gt;%3&lt;/b&gt;%4</source>
        <translation>χ² %1, %2 Freiheitsgrade, &lt;b&gt;%3&lt;/b&gt;%4</translation>
    </message>
    <message>
        <source>: &lt;b&gt;fits badly&lt;/b&gt;</source>
        <translation>: &lt;b&gt;passt schlecht&lt;/b&gt;</translation>
    </message>
    <message numerus="yes">
        <source>%n line(s) left out</source>
        <translation>
            <numerusform>%n Linie weggelassen</numerusform>
            <numerusform>%n Linien weggelassen</numerusform>
        </translation>
    </message>
    <message>
        <source>&lt;i&gt;%1&lt;/i&gt;</source>
        <translation>&lt;i&gt;%1&lt;/i&gt;</translation>
    </message>
    <message>
        <source>Pair all automatically</source>
        <translation>Alle automatisch zuordnen</translation>
    </message>
    <message>
        <source>Pair %1 by Hand</source>
        <translation>%1 von Hand zuordnen</translation>
    </message>
    <message>
        <source>%1: line at %2 ppm; RMSD %3 ppm</source>
        <translation>%1: Linie bei %2 ppm; RMSD %3 ppm</translation>
    </message>
    <message>
        <source>This line finds its site by itself already</source>
        <translation>Diese Linie findet ihren Platz schon von selbst</translation>
    </message>
    <message>
        <source>Pair Line Automatically</source>
        <translation>Linie automatisch zuordnen</translation>
    </message>
    <message>
        <source>Pair All Automatically</source>
        <translation>Alle automatisch zuordnen</translation>
    </message>
    <message>
        <source>Line of %1</source>
        <translation>Linie von %1</translation>
    </message>
    <message>
        <source>%1 ppm</source>
        <translation>%1 ppm</translation>
    </message>
    <message>
        <source>Pair This Line &amp;Automatically	Del</source>
        <translation>Diese Linie &amp;automatisch zuordnen	Entf</translation>
    </message>
    <message>
        <source>Pair A&amp;ll Automatically</source>
        <translation>A&amp;lle automatisch zuordnen</translation>
    </message>
    <message>
        <source>Nucleus</source>
        <translation>Kern</translation>
    </message>
    <message>
        <source>Averaging</source>
        <translation>Mittelung</translation>
    </message>
    <message>
        <source>Reference</source>
        <translation>Referenz</translation>
    </message>
    <message>
        <source>Slope</source>
        <translation>Steigung</translation>
    </message>
    <message>
        <source>Error σ</source>
        <translation>Fehler σ</translation>
    </message>
    <message>
        <source>Lines Left Out</source>
        <translation>Ausgelassene Linien</translation>
    </message>
    <message>
        <source>Comparison: %1</source>
        <translation>Vergleich: %1</translation>
    </message>
    <message>
        <source>Reference, ppm</source>
        <translation>Referenz, ppm</translation>
    </message>
    <message>
        <source>&lt;i&gt;The sites do not go into the numbers of peaks at one place: each place counts as one line&lt;/i&gt;</source>
        <translation>&lt;i&gt;Die Plätze gehen nicht in den Anzahlen der Peaks an einer Stelle auf: jede Stelle zählt als eine Linie&lt;/i&gt;</translation>
    </message>
    <message>
        <source>RMSD %1 ppm</source>
        <translation>RMSD %1 ppm</translation>
    </message>
    <message>
        <source>This measurement keeps options of its own: the numbers are not those of the ranking</source>
        <translation>Diese Messung behält eigene Einstellungen: die Zahlen sind nicht die der Rangliste</translation>
    </message>
</context>
<context>
    <name>Workbench::ContentsDock</name>
    <message>
        <source>a, b, c = %1, %2, %3 Å
α, β, γ = %4</source>
        <translation>a, b, c = %1, %2, %3 Å
α, β, γ = %4</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Contents of the document</source>
        <translation>Inhalt des Dokuments</translation>
    </message>
    <message>
        <source>%1, Z = %2</source>
        <translation>%1, Z = %2</translation>
    </message>
    <message>
        <source>Without a file</source>
        <translation>Ohne Datei</translation>
    </message>
    <message>
        <source>%1, simulated</source>
        <translation>%1, simuliert</translation>
    </message>
    <message>
        <source>Measured spectrum</source>
        <translation>Gemessenes Spektrum</translation>
    </message>
    <message>
        <source>peak list</source>
        <translation>Peakliste</translation>
    </message>
    <message numerus="yes">
        <source>%n peak(s)
in the plot &quot;%1&quot;; can be dragged onto another one</source>
        <translation>
            <numerusform>%n Peak
im Plot „%1“; lässt sich auf einen anderen ziehen</numerusform>
            <numerusform>%n Peaks
im Plot „%1“; lässt sich auf einen anderen ziehen</numerusform>
        </translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>Name:</translation>
    </message>
    <message>
        <source>Rename Spectrum</source>
        <translation>Spektrum umbenennen</translation>
    </message>
    <message>
        <source>&amp;Go There	Enter</source>
        <translation>&amp;Dorthin gehen	Eingabe</translation>
    </message>
    <message>
        <source>&amp;Rename...	F2</source>
        <translation>&amp;Umbenennen...	F2</translation>
    </message>
    <message>
        <source>&amp;Show</source>
        <translation>&amp;Zeigen</translation>
    </message>
    <message>
        <source>Re&amp;move	Del</source>
        <translation>&amp;Entfernen	Entf</translation>
    </message>
    <message>
        <source>Spectra can be dropped onto plots</source>
        <translation>Spektren lassen sich auf Plots ablegen</translation>
    </message>
    <message>
        <source>%1 is in this plot already</source>
        <translation>%1 ist schon in diesem Plot</translation>
    </message>
    <message>
        <source>%1 is a spectrum of other nuclei or dimensions than this plot</source>
        <translation>%1 ist ein Spektrum anderer Kerne oder Dimensionen als dieser Plot</translation>
    </message>
    <message>
        <source>%1 is in the plot &quot;%2&quot; now, too</source>
        <translation>%1 ist jetzt auch im Plot „%2“</translation>
    </message>
    <message>
        <source>As it was read:</source>
        <translation>Beim Lesen:</translation>
    </message>
    <message>
        <source>%1 has its axes the other way round: F2 is %2, in this plot %3</source>
        <translation>Die Achsen von %1 liegen andersherum: F2 ist %2, in diesem Plot %3</translation>
    </message>
</context>
<context>
    <name>Workbench::ContourLevelsDialog</name>
    <message>
        <source>Contour levels</source>
        <translation>Konturlinien</translation>
    </message>
    <message>
        <source> % of the maximum</source>
        <translation> % des Maximums</translation>
    </message>
    <message>
        <source>&amp;Lowest level:</source>
        <translation>&amp;Unterste Linie:</translation>
    </message>
    <message>
        <source>&amp;Factor between levels:</source>
        <translation>&amp;Faktor zwischen Linien:</translation>
    </message>
    <message>
        <source>&amp;Number of levels:</source>
        <translation>&amp;Anzahl der Linien:</translation>
    </message>
</context>
<context>
    <name>Workbench::DocumentController</name>
    <message>
        <source>Untitled</source>
        <translation>Unbenannt</translation>
    </message>
    <message>
        <source>%1%2 – Magres Workbench</source>
        <translation>%1%2 – Magres Workbench</translation>
    </message>
    <message>
        <source>Unsaved Changes</source>
        <translation>Nicht gespeicherte Änderungen</translation>
    </message>
    <message>
        <source>Save the changes to %1?</source>
        <translation>Die Änderungen an %1 speichern?</translation>
    </message>
    <message>
        <source>What is not saved is lost.</source>
        <translation>Was nicht gespeichert ist, geht verloren.</translation>
    </message>
    <message>
        <source>Opening %1...</source>
        <translation>%1 wird geöffnet...</translation>
    </message>
    <message>
        <source>A plug-in is missing</source>
        <translation>Ein Plug-in fehlt</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>Speichern unter</translation>
    </message>
    <message>
        <source>Saving %1...</source>
        <translation>%1 wird gespeichert...</translation>
    </message>
    <message>
        <source>The document cannot be saved</source>
        <translation>Das Dokument kann nicht gespeichert werden</translation>
    </message>
    <message>
        <source>%1 is saved</source>
        <translation>%1 ist gespeichert</translation>
    </message>
    <message>
        <source>Magres Workbench documents (*.%1)</source>
        <translation>Dokumente der Magres Workbench (*.%1)</translation>
    </message>
    <message>
        <source>Changed Elsewhere</source>
        <translation>Anderswo geändert</translation>
    </message>
    <message>
        <source>%1 was changed by another program since it was opened here.</source>
        <translation>%1 wurde von einem anderen Programm geändert, seit es hier geöffnet wurde.</translation>
    </message>
    <message>
        <source>Saving replaces what was written there; &quot;Save As&quot; keeps both.</source>
        <translation>Speichern ersetzt, was dort geschrieben wurde; „Speichern unter“ behält beides.</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>E&amp;rsetzen</translation>
    </message>
    <message>
        <source>%1 is a file of another kind: choose another name</source>
        <translation>%1 ist eine Datei anderer Art: einen anderen Namen wählen</translation>
    </message>
</context>
<context>
    <name>Workbench::DocumentItem</name>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>Speichern...</translation>
    </message>
    <message>
        <source>Print...</source>
        <translation>Drucken...</translation>
    </message>
    <message>
        <source>The picture is on the clipboard</source>
        <translation>Das Bild ist in der Zwischenablage</translation>
    </message>
    <message>
        <source>Save Picture</source>
        <translation>Bild speichern</translation>
    </message>
    <message>
        <source>%1 is written</source>
        <translation>%1 ist geschrieben</translation>
    </message>
    <message>
        <source>%1 cannot be written</source>
        <translation>%1 kann nicht geschrieben werden</translation>
    </message>
</context>
<context>
    <name>Workbench::ExportMenu</name>
    <message>
        <source>&amp;Export</source>
        <translation>&amp;Exportieren</translation>
    </message>
    <message>
        <source>&amp;Page...</source>
        <translation>&amp;Seite...</translation>
    </message>
    <message>
        <source>Ctrl+E</source>
        <translation>Ctrl+E</translation>
    </message>
    <message>
        <source>Export Page</source>
        <translation>Seite exportieren</translation>
    </message>
    <message>
        <source>&amp;Spectrum...</source>
        <translation>S&amp;pektrum...</translation>
    </message>
    <message>
        <source>Export Spectrum</source>
        <translation>Spektrum exportieren</translation>
    </message>
    <message>
        <source>&amp;Table...</source>
        <translation>&amp;Tabelle...</translation>
    </message>
    <message>
        <source>Export Table</source>
        <translation>Tabelle exportieren</translation>
    </message>
    <message>
        <source>%1 is written</source>
        <translation>%1 ist geschrieben</translation>
    </message>
    <message>
        <source>%1 cannot be written</source>
        <translation>%1 kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>There is no spectrum on the page</source>
        <translation>Auf der Seite ist kein Spektrum</translation>
    </message>
    <message>
        <source>There is no table on the page</source>
        <translation>Auf der Seite ist keine Tabelle</translation>
    </message>
    <message>
        <source>The file name must end in .csv or .json</source>
        <translation>Der Dateiname muss auf .csv oder .json enden</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not an NMR nucleus such as 13C</source>
        <translation>„%1“ ist kein NMR-Kern wie 13C</translation>
    </message>
    <message>
        <source>SIMPSON input</source>
        <translation>SIMPSON-Eingabe</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>&amp;Notes in Pictures of the Page</source>
        <translation>&amp;Hinweise in Bildern der Seite</translation>
    </message>
    <message>
        <source>The selected rows of the table hold no site of %1. Select some, or no row at all for all sites</source>
        <translation>Die markierten Zeilen der Tabelle enthalten keinen Platz von %1. Einige markieren oder gar keine Zeile für alle Plätze</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message numerus="yes">
        <source>%n site(s): %1</source>
        <translation>
            <numerusform>%n Platz: %1</numerusform>
            <numerusform>%n Plätze: %1</numerusform>
        </translation>
    </message>
    <message>
        <source>Sites that would be written: %1</source>
        <translation>Plätze, die geschrieben würden: %1</translation>
    </message>
    <message>
        <source>Nuclei, such as 13C, 1H. %1
%2:</source>
        <translation>Kerne, etwa 13C, 1H. %1
%2:</translation>
    </message>
    <message>
        <source>Only atoms in the selected rows of the table are taken.</source>
        <translation>Nur Atome in den markierten Zeilen der Tabelle werden genommen.</translation>
    </message>
    <message>
        <source>All their atoms are taken; rows selected in the table restrict them.</source>
        <translation>Alle ihre Atome werden genommen; in der Tabelle markierte Zeilen schränken sie ein.</translation>
    </message>
    <message>
        <source>The spin system is written: %1</source>
        <translation>Das Spinsystem ist geschrieben: %1</translation>
    </message>
    <message>
        <source>Spin S&amp;ystem...</source>
        <translation>Spins&amp;ystem...</translation>
    </message>
    <message>
        <source>Export Spin System</source>
        <translation>Spinsystem exportieren</translation>
    </message>
    <message>
        <source>mrsimulator spin systems</source>
        <translation>Spinsysteme für mrsimulator</translation>
    </message>
    <message>
        <source>%1 is written: %2, the active one of %3 spectra</source>
        <translation>%1 ist geschrieben: %2, das aktive von %3 Spektren</translation>
    </message>
</context>
<context>
    <name>Workbench::FileFilterRegistry</name>
    <message>
        <source>File %1 does not exist</source>
        <translation>Die Datei %1 gibt es nicht</translation>
    </message>
    <message>
        <source>%1 is a directory, a file was expected</source>
        <translation>%1 ist ein Verzeichnis, eine Datei wurde erwartet</translation>
    </message>
    <message>
        <source>%1 is a device or a pipe, a file was expected</source>
        <translation>%1 ist ein Gerät oder eine Pipe, eine Datei wurde erwartet</translation>
    </message>
    <message>
        <source>File %1 cannot be opened: %2</source>
        <translation>Die Datei %1 kann nicht geöffnet werden: %2</translation>
    </message>
    <message>
        <source>File %1 is empty</source>
        <translation>Die Datei %1 ist leer</translation>
    </message>
</context>
<context>
    <name>Workbench::FrequencyDialog</name>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
    <message>
        <source>Frequency of the spectrum</source>
        <translation>Frequenz des Spektrums</translation>
    </message>
    <message>
        <source>The positions in %1 are frequencies. Of which nucleus is it, and what is the frequency of 0 ppm?</source>
        <translation>Die Positionen in %1 sind Frequenzen. Von welchem Kern ist es, und bei welcher Frequenz liegt 0 ppm?</translation>
    </message>
    <message>
        <source>What the spectrometer is called by: the frequency of 1H</source>
        <translation>Wonach das Spektrometer benannt ist: die Frequenz von 1H</translation>
    </message>
    <message>
        <source>Hz divided by this are ppm. Follows from the nucleus and the spectrometer, and can be given to the last digit</source>
        <translation>Hz, hierdurch geteilt, sind ppm. Folgt aus Kern und Spektrometer und kann bis zur letzten Stelle angegeben werden</translation>
    </message>
    <message>
        <source>&amp;Unit:</source>
        <translation>&amp;Einheit:</translation>
    </message>
    <message>
        <source>&amp;Nucleus of F2:</source>
        <translation>&amp;Kern in F2:</translation>
    </message>
    <message>
        <source>&amp;Nucleus:</source>
        <translation>&amp;Kern:</translation>
    </message>
    <message>
        <source>Nucleus of F&amp;1:</source>
        <translation>Kern in F&amp;1:</translation>
    </message>
    <message>
        <source>&amp;Spectrometer (1H):</source>
        <translation>&amp;Spektrometer (1H):</translation>
    </message>
    <message>
        <source>&amp;0 ppm at:</source>
        <translation>&amp;0 ppm bei:</translation>
    </message>
    <message>
        <source>choose</source>
        <translation>wählen</translation>
    </message>
    <message>
        <source>The nucleus and a frequency are needed</source>
        <translation>Kern und Frequenz werden gebraucht</translation>
    </message>
    <message>
        <source>The positions go from %1 to %2 ppm.</source>
        <translation>Die Positionen reichen von %1 bis %2 ppm.</translation>
    </message>
</context>
<context>
    <name>Workbench::GestureHelp</name>
    <message>
        <source>Spectrum</source>
        <translation>Spektrum</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>Mausrad</translation>
    </message>
    <message>
        <source>zooms at the cursor; over an axis that axis alone (only the active item)</source>
        <translation>zoomt um den Mauszeiger; über einer Achse nur diese (nur das aktive Objekt)</translation>
    </message>
    <message>
        <source>Shift+wheel, + and -</source>
        <translation>Umschalt+Mausrad, + und -</translation>
    </message>
    <message>
        <source>intensity of a 1D spectrum, lowest contour of a 2D one</source>
        <translation>Intensität eines 1D-Spektrums, unterste Konturlinie eines 2D-Spektrums</translation>
    </message>
    <message>
        <source>Drag</source>
        <translation>Ziehen</translation>
    </message>
    <message>
        <source>marks the range or box to be shown</source>
        <translation>markiert den Bereich oder Ausschnitt, der gezeigt werden soll</translation>
    </message>
    <message>
        <source>Shift+drag, middle button</source>
        <translation>Umschalt+Ziehen, mittlere Taste</translation>
    </message>
    <message>
        <source>moves the spectrum</source>
        <translation>verschiebt das Spektrum</translation>
    </message>
    <message>
        <source>Double click, Home</source>
        <translation>Doppelklick, Pos1</translation>
    </message>
    <message>
        <source>the full range again</source>
        <translation>wieder der volle Bereich</translation>
    </message>
    <message>
        <source>Arrow keys, Page Up, Page Down</source>
        <translation>Pfeiltasten, Bild auf, Bild ab</translation>
    </message>
    <message>
        <source>move and zoom</source>
        <translation>verschieben und zoomen</translation>
    </message>
    <message>
        <source>Click on a peak or its label</source>
        <translation>Klick auf einen Peak oder seine Bezeichnung</translation>
    </message>
    <message>
        <source>selects its atoms in molecule and table; with Ctrl further ones</source>
        <translation>wählt seine Atome in Molekül und Tabelle; mit Strg weitere</translation>
    </message>
    <message>
        <source>Ctrl+Page Up, Ctrl+Page Down</source>
        <translation>Strg+Bild auf, Strg+Bild ab</translation>
    </message>
    <message>
        <source>the previous or next spectrum of the stack becomes active</source>
        <translation>das vorige oder nächste Spektrum des Stapels wird aktiv</translation>
    </message>
    <message>
        <source>Editing peaks (Ctrl+Shift+E; measured spectra)</source>
        <translation>Peaks bearbeiten (Strg+Umschalt+E; gemessene Spektren)</translation>
    </message>
    <message>
        <source>Click</source>
        <translation>Klick</translation>
    </message>
    <message>
        <source>adds a peak at the nearest top; with Shift right there</source>
        <translation>setzt einen Peak auf das nächste Maximum; mit Umschalt genau dorthin</translation>
    </message>
    <message>
        <source>Drag a mark</source>
        <translation>Marke ziehen</translation>
    </message>
    <message>
        <source>moves the peak to another top; with Shift anywhere</source>
        <translation>verschiebt den Peak zu einem anderen Maximum; mit Umschalt beliebig</translation>
    </message>
    <message>
        <source>Right click on a mark, Delete</source>
        <translation>Rechtsklick auf eine Marke, Entf</translation>
    </message>
    <message>
        <source>takes the peak away</source>
        <translation>entfernt den Peak</translation>
    </message>
    <message>
        <source>Ctrl+click on a mark</source>
        <translation>Strg+Klick auf eine Marke</translation>
    </message>
    <message>
        <source>counts the peak once more, for equivalent sites</source>
        <translation>zählt den Peak einmal mehr, für äquivalente Plätze</translation>
    </message>
    <message>
        <source>Esc</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>ends the editing</source>
        <translation>beendet das Bearbeiten</translation>
    </message>
    <message>
        <source>Molecule</source>
        <translation>Molekül</translation>
    </message>
    <message>
        <source>Drag, arrow keys</source>
        <translation>Ziehen, Pfeiltasten</translation>
    </message>
    <message>
        <source>turns the molecule</source>
        <translation>dreht das Molekül</translation>
    </message>
    <message>
        <source>Wheel, + and -</source>
        <translation>Mausrad, + und -</translation>
    </message>
    <message>
        <source>zooms</source>
        <translation>zoomt</translation>
    </message>
    <message>
        <source>Click on an atom</source>
        <translation>Klick auf ein Atom</translation>
    </message>
    <message>
        <source>selects it, its row and its peaks; with Ctrl further ones</source>
        <translation>wählt das Atom, seine Zeile und seine Peaks; mit Strg weitere</translation>
    </message>
    <message>
        <source>Double click beside the atoms, Home</source>
        <translation>Doppelklick neben die Atome, Pos1</translation>
    </message>
    <message>
        <source>turns it back</source>
        <translation>dreht es zurück</translation>
    </message>
    <message>
        <source>Drag the title bar or the lower right corner</source>
        <translation>Titelleiste oder rechte untere Ecke ziehen</translation>
    </message>
    <message>
        <source>moves or resizes an item</source>
        <translation>verschiebt ein Objekt oder ändert seine Größe</translation>
    </message>
    <message>
        <source>Tab, Shift+Tab</source>
        <translation>Tab, Umschalt+Tab</translation>
    </message>
    <message>
        <source>next or previous item</source>
        <translation>nächstes oder voriges Objekt</translation>
    </message>
    <message>
        <source>Enter, menu key, right click</source>
        <translation>Eingabe, Menütaste, Rechtsklick</translation>
    </message>
    <message>
        <source>the item&apos;s menu</source>
        <translation>das Menü des Objekts</translation>
    </message>
    <message>
        <source>Ctrl+wheel, Ctrl++, Ctrl+-, Ctrl+0</source>
        <translation>Strg+Mausrad, Strg++, Strg+-, Strg+0</translation>
    </message>
    <message>
        <source>Drop files</source>
        <translation>Dateien ablegen</translation>
    </message>
    <message>
        <source>opens them; a measured spectrum goes onto the plot where it falls</source>
        <translation>öffnet sie; ein gemessenes Spektrum kommt in den Plot, auf den es fällt</translation>
    </message>
    <message>
        <source>Keyboard and mouse</source>
        <translation>Tastatur und Maus</translation>
    </message>
    <message>
        <source>Ctrl+drag</source>
        <translation>Strg+Ziehen</translation>
    </message>
    <message>
        <source>moves a 1D spectrum up or down; with Shift makes it higher or lower</source>
        <translation>verschiebt ein 1D-Spektrum nach oben oder unten; mit Umschalt wird es höher oder niedriger</translation>
    </message>
    <message>
        <source>I, D</source>
        <translation>I, D</translation>
    </message>
    <message>
        <source>dragging marks integrals, or distances in ppm and Hz; Esc ends</source>
        <translation>Ziehen markiert Integrale oder Abstände in ppm und Hz; Esc beendet</translation>
    </message>
    <message>
        <source>M</source>
        <translation>M</translation>
    </message>
    <message>
        <source>clicks on two, three, four atoms measure distance, angle, torsion; Esc ends</source>
        <translation>Klicks auf zwei, drei, vier Atome messen Abstand, Winkel, Torsionswinkel; Esc beendet</translation>
    </message>
    <message>
        <source>N</source>
        <translation>N</translation>
    </message>
    <message>
        <source>lists the nearest atoms of the selected one, with their dipolar couplings</source>
        <translation>listet die nächsten Atome des gewählten auf, mit ihren Dipolkopplungen</translation>
    </message>
    <message>
        <source>Table</source>
        <translation>Tabelle</translation>
    </message>
    <message>
        <source>Click on a title</source>
        <translation>Klick auf einen Spaltentitel</translation>
    </message>
    <message>
        <source>sorts by that column: up, down, as in the file</source>
        <translation>sortiert nach dieser Spalte, auf- und absteigend, dann wie in der Datei</translation>
    </message>
    <message>
        <source>Ctrl+F</source>
        <translation>Strg+F</translation>
    </message>
    <message>
        <source>filters the rows: C,H   C2..C10   iso&gt;100   cq=0.1..2</source>
        <translation>filtert die Zeilen: C,H   C2..C10   iso&gt;100   cq=0.1..2</translation>
    </message>
    <message>
        <source>Workspace</source>
        <translation>Arbeitsfläche</translation>
    </message>
    <message>
        <source>zooms; as wide as the window again</source>
        <translation>zoomt; wieder so breit wie das Fenster</translation>
    </message>
    <message>
        <source>Ctrl+Shift+P</source>
        <translation>Strg+Umschalt+P</translation>
    </message>
    <message>
        <source>the page as it is exported, and back</source>
        <translation>die Seite, wie sie exportiert wird, und zurück</translation>
    </message>
    <message>
        <source>Ctrl+Z, Ctrl+Y</source>
        <translation>Strg+Z, Strg+Y</translation>
    </message>
    <message>
        <source>takes changes back and makes them again</source>
        <translation>nimmt Änderungen zurück und stellt sie wieder her</translation>
    </message>
    <message>
        <source>F2, Delete</source>
        <translation>F2, Entf</translation>
    </message>
    <message>
        <source>renames or removes an item</source>
        <translation>benennt ein Objekt um oder entfernt es</translation>
    </message>
    <message>
        <source>Drag a spectrum from the contents</source>
        <translation>Spektrum aus dem Inhalt ziehen</translation>
    </message>
    <message>
        <source>puts it onto the plot where it falls</source>
        <translation>legt es in den Plot, auf den es fällt</translation>
    </message>
    <message>
        <source>Compare (Ctrl+Shift+C): pairs of sites and measured lines</source>
        <translation>Vergleichen (Strg+Umschalt+C): Paare aus Plätzen und gemessenen Linien</translation>
    </message>
    <message>
        <source>Click on a row, arrow keys</source>
        <translation>Klick auf eine Zeile, Pfeiltasten</translation>
    </message>
    <message>
        <source>lights the atoms, the peaks and the point of the pair</source>
        <translation>hebt die Atome, die Peaks und den Punkt des Paares hervor</translation>
    </message>
    <message>
        <source>Drag a row onto another, Alt+arrow keys</source>
        <translation>Zeile auf eine andere ziehen, Alt+Pfeiltasten</translation>
    </message>
    <message>
        <source>puts its line onto that site</source>
        <translation>legt ihre Linie auf jenen Platz</translation>
    </message>
    <message>
        <source>Enter, right click</source>
        <translation>Eingabe, Rechtsklick</translation>
    </message>
    <message>
        <source>all lines, to choose the one of this site</source>
        <translation>alle Linien, um die dieses Platzes zu wählen</translation>
    </message>
    <message>
        <source>Delete on a row</source>
        <translation>Entf auf einer Zeile</translation>
    </message>
    <message>
        <source>lets the line find its site by itself again</source>
        <translation>lässt die Linie ihren Platz wieder von selbst finden</translation>
    </message>
    <message>
        <source>Ctrl+Shift+R</source>
        <translation>Strg+Umschalt+R</translation>
    </message>
    <message>
        <source>ranks many structures by measured lines</source>
        <translation>ordnet viele Strukturen nach gemessenen Linien</translation>
    </message>
    <message>
        <source>Right click on a title</source>
        <translation>Rechtsklick auf einen Titel</translation>
    </message>
    <message>
        <source>shows and hides columns, as the menu Table does</source>
        <translation>zeigt und verbirgt Spalten, wie das Menü Tabelle</translation>
    </message>
</context>
<context>
    <name>Workbench::GuideWindow</name>
    <message>
        <source>User guide</source>
        <translation>Benutzerhandbuch</translation>
    </message>
</context>
<context>
    <name>Workbench::ItemNotes</name>
    <message>
        <source>Edit Spectrum...</source>
        <translation>Spektrum bearbeiten...</translation>
    </message>
    <message>
        <source>Fit Range</source>
        <translation>Bereich anpassen</translation>
    </message>
    <message>
        <source>Auto reference</source>
        <translation>Automatische Referenz</translation>
    </message>
    <message>
        <source>Set Reference...</source>
        <translation>Referenz festlegen...</translation>
    </message>
    <message numerus="yes">
        <source>%1 (and %n more doubt(s) about the file)</source>
        <translation>
            <numerusform>%1 (und %n weiterer Zweifel an der Datei)</numerusform>
            <numerusform>%1 (und %n weitere Zweifel an der Datei)</numerusform>
        </translation>
    </message>
    <message>
        <source>Read...</source>
        <translation>Lesen...</translation>
    </message>
    <message>
        <source>Doubts about the file</source>
        <translation>Zweifel an der Datei</translation>
    </message>
    <message>
        <source>%1 was opened. What is doubtful in it:</source>
        <translation>%1 ist geöffnet. Zweifelhaft daran ist:</translation>
    </message>
    <message>
        <source>&amp;Dismiss Note</source>
        <translation>Hinweis &amp;verwerfen</translation>
    </message>
    <message>
        <source>Plot of Its Own</source>
        <translation>Eigener Plot</translation>
    </message>
</context>
<context>
    <name>Workbench::MainScene</name>
    <message>
        <source>Add %1</source>
        <translation>%1 hinzufügen</translation>
    </message>
    <message>
        <source>Delete %1</source>
        <translation>%1 löschen</translation>
    </message>
    <message>
        <source>Move %1</source>
        <translation>%1 verschieben</translation>
    </message>
    <message>
        <source>Simulated</source>
        <translation>Simuliert</translation>
    </message>
    <message>
        <source>Rename %1</source>
        <translation>%1 umbenennen</translation>
    </message>
    <message>
        <source>%1, simulated</source>
        <translation>%1, simuliert</translation>
    </message>
    <message>
        <source>Dismiss Note of %1</source>
        <translation>Hinweis zu %1 verwerfen</translation>
    </message>
    <message>
        <source>Columns of %1</source>
        <translation>Spalten von %1</translation>
    </message>
</context>
<context>
    <name>Workbench::MainView</name>
    <message>
        <source>Workspace</source>
        <translation>Arbeitsfläche</translation>
    </message>
</context>
<context>
    <name>Workbench::MissingTable</name>
    <message>
        <source>%1 (the plug-in &quot;%2&quot; is not loaded)</source>
        <translation>%1 (das Plug-in „%2“ ist nicht geladen)</translation>
    </message>
</context>
<context>
    <name>Workbench::MoleculeItem</name>
    <message>
        <source>Molecule without atoms</source>
        <translation>Molekül ohne Atome</translation>
    </message>
    <message>
        <source>Unit cell: %1</source>
        <translation>Elementarzelle: %1</translation>
    </message>
    <message>
        <source>Molecule: %1</source>
        <translation>Molekül: %1</translation>
    </message>
    <message>
        <source>Labels</source>
        <translation>Bezeichnungen</translation>
    </message>
    <message>
        <source>Show Unit Cell</source>
        <translation>Elementarzelle zeigen</translation>
    </message>
    <message>
        <source>Show Hydrogens</source>
        <translation>Wasserstoffe zeigen</translation>
    </message>
    <message>
        <source>Reset View</source>
        <translation>Ansicht zurücksetzen</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Element</source>
        <translation>Element</translation>
    </message>
    <message>
        <source>Element and Number</source>
        <translation>Element und Nummer</translation>
    </message>
    <message>
        <source>Label of the File</source>
        <translation>Bezeichnung der Datei</translation>
    </message>
    <message>
        <source>%1 × %2 × %3 cells</source>
        <translation>%1 × %2 × %3 Zellen</translation>
    </message>
    <message>
        <source>shielding, semi-axes |σii|, scaled for each element</source>
        <translation>Abschirmung, Halbachsen |σii|, für jedes Element skaliert</translation>
    </message>
    <message>
        <source>shielding, semi-axes |σii − iso|, scaled for each element</source>
        <translation>Abschirmung, Halbachsen |σii − iso|, für jedes Element skaliert</translation>
    </message>
    <message>
        <source>electric field gradient, semi-axes |Vii|, scaled for each element</source>
        <translation>elektrischer Feldgradient, Halbachsen |Vii|, für jedes Element skaliert</translation>
    </message>
    <message>
        <source>dashed axes: negative</source>
        <translation>gestrichelte Achsen: negativ</translation>
    </message>
    <message>
        <source>Crystal</source>
        <translation>Kristall</translation>
    </message>
    <message>
        <source>Tensors</source>
        <translation>Tensoren</translation>
    </message>
    <message>
        <source>Measure Distances and Angles</source>
        <translation>Abstände und Winkel messen</translation>
    </message>
    <message>
        <source>Remove Measurements</source>
        <translation>Messungen entfernen</translation>
    </message>
    <message>
        <source>Nearest Contacts of the Selected Atom</source>
        <translation>Nächste Kontakte des gewählten Atoms</translation>
    </message>
    <message>
        <source>Copy Contacts</source>
        <translation>Kontakte kopieren</translation>
    </message>
    <message>
        <source>Molecules</source>
        <translation>Moleküle</translation>
    </message>
    <message>
        <source>Cell Contents</source>
        <translation>Zellinhalt</translation>
    </message>
    <message>
        <source>%1 × %1 × %1</source>
        <translation>%1 × %1 × %1</translation>
    </message>
    <message>
        <source>Other Numbers of Cells...</source>
        <translation>Andere Zellenzahlen...</translation>
    </message>
    <message>
        <source>Supercell</source>
        <translation>Superzelle</translation>
    </message>
    <message>
        <source>Numbers of cells along a, b and c:</source>
        <translation>Zahl der Zellen entlang a, b und c:</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not understood: three whole numbers such as 2 2 1 are wanted</source>
        <translation>„%1“ ist nicht zu verstehen: drei ganze Zahlen wie 2 2 1 sind gefragt</translation>
    </message>
    <message>
        <source>%1 × %2 × %3 cells are shown: no more than %4 atoms can be</source>
        <translation>%1 × %2 × %3 Zellen werden gezeigt: mehr als %4 Atome sind nicht möglich</translation>
    </message>
    <message>
        <source>Shielding</source>
        <translation>Abschirmung</translation>
    </message>
    <message>
        <source>Anisotropic Part of the Shielding</source>
        <translation>Anisotroper Teil der Abschirmung</translation>
    </message>
    <message>
        <source>Electric Field Gradient</source>
        <translation>Elektrischer Feldgradient</translation>
    </message>
    <message>
        <source>Principal Axes</source>
        <translation>Hauptachsen</translation>
    </message>
    <message>
        <source>%1 % of their size</source>
        <translation>%1 % ihrer Größe</translation>
    </message>
    <message>
        <source>Measuring: click two atoms for their distance, a third for an angle, a fourth for a torsion angle; beside the atoms to start anew; Esc ends</source>
        <translation>Messen: zwei Atome anklicken für ihren Abstand, ein drittes für einen Winkel, ein viertes für einen Torsionswinkel; neben die Atome klicken, um neu zu beginnen; Esc beendet</translation>
    </message>
    <message>
        <source>Click an atom to see what is near it</source>
        <translation>Ein Atom anklicken, um zu sehen, was in seiner Nähe ist</translation>
    </message>
    <message>
        <source>atom	neighbour	cell	distance / Å	nuclei	dipolar coupling / kHz</source>
        <translation>Atom	Nachbar	Zelle	Abstand / Å	Kerne	Dipolkopplung / kHz</translation>
    </message>
    <message>
        <source> kHz</source>
        <translation> kHz</translation>
    </message>
    <message>
        <source>Nearest to %1</source>
        <translation>Nächste Atome von %1</translation>
    </message>
</context>
<context>
    <name>Workbench::NmrData</name>
    <message>
        <source>Add Spectrum</source>
        <translation>Spektrum hinzufügen</translation>
    </message>
    <message>
        <source>Remove Spectrum</source>
        <translation>Spektrum entfernen</translation>
    </message>
    <message>
        <source>Change Spectrum</source>
        <translation>Spektrum ändern</translation>
    </message>
</context>
<context>
    <name>Workbench::NmrItem</name>
    <message>
        <source>Editing peaks: %1</source>
        <translation>Peaks bearbeiten: %1</translation>
    </message>
    <message>
        <source>Show Full Range</source>
        <translation>Vollen Bereich zeigen</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>Contour Levels...</source>
        <translation>Konturlinien...</translation>
    </message>
    <message>
        <source>Peak Crosses</source>
        <translation>Peak-Kreuze</translation>
    </message>
    <message>
        <source>Peak Sticks</source>
        <translation>Peak-Striche</translation>
    </message>
    <message>
        <source>Peak Labels</source>
        <translation>Peak-Bezeichnungen</translation>
    </message>
    <message>
        <source>Legend</source>
        <translation>Legende</translation>
    </message>
    <message>
        <source>No atoms are assigned to this peak</source>
        <translation>Diesem Peak sind keine Atome zugeordnet</translation>
    </message>
    <message numerus="yes">
        <source>%n atom(s) selected</source>
        <translation>
            <numerusform>%n Atom gewählt</numerusform>
            <numerusform>%n Atome gewählt</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 spectrum, 2D</source>
        <translation>%1-Spektrum, 2D</translation>
    </message>
    <message>
        <source>%1 spectrum</source>
        <translation>%1-Spektrum</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Darstellung</translation>
    </message>
    <message>
        <source>Measure</source>
        <translation>Messen</translation>
    </message>
    <message>
        <source>Edit Title...</source>
        <translation>Titel bearbeiten...</translation>
    </message>
    <message>
        <source>Copy Numbers</source>
        <translation>Zahlen kopieren</translation>
    </message>
    <message>
        <source>Spectra on One Base Line</source>
        <translation>Spektren auf einer Grundlinie</translation>
    </message>
    <message>
        <source>Axis in Hz</source>
        <translation>Achse in Hz</translation>
    </message>
    <message>
        <source>Same Range as Other Plots of the Nucleus</source>
        <translation>Gleicher Bereich wie andere Plots des Kerns</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>By its place in the stack</source>
        <translation>Nach der Stelle im Stapel</translation>
    </message>
    <message>
        <source>Own Height and Place Again</source>
        <translation>Wieder eigene Höhe und Lage</translation>
    </message>
    <message>
        <source>Mark Integrals</source>
        <translation>Integrale markieren</translation>
    </message>
    <message>
        <source>Mark Distances</source>
        <translation>Abstände markieren</translation>
    </message>
    <message>
        <source>Set Integral</source>
        <translation>Integral festlegen</translation>
    </message>
    <message>
        <source>%1 to %2 ppm...</source>
        <translation>%1 bis %2 ppm...</translation>
    </message>
    <message>
        <source>Remove the Last Integral</source>
        <translation>Letztes Integral entfernen</translation>
    </message>
    <message>
        <source>Remove the Last Distance</source>
        <translation>Letzten Abstand entfernen</translation>
    </message>
    <message>
        <source>Remove All</source>
        <translation>Alle entfernen</translation>
    </message>
    <message>
        <source>Value of this integral:</source>
        <translation>Wert dieses Integrals:</translation>
    </message>
    <message>
        <source>Integrals: drag over the regions; Esc ends. The first one is 1 until another is set</source>
        <translation>Integrale: über die Bereiche ziehen; Esc beendet. Das erste ist 1, bis ein anderes festgelegt wird</translation>
    </message>
    <message>
        <source>Distances: drag from one place to another; Esc ends</source>
        <translation>Abstände: von einer Stelle zur anderen ziehen; Esc beendet</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Title of the plot (empty: made from its spectra):</source>
        <translation>Titel des Plots (leer: aus seinen Spektren gebildet):</translation>
    </message>
    <message>
        <source>ppm	intensity</source>
        <translation>ppm	Intensität</translation>
    </message>
    <message>
        <source>label	ppm F2	ppm F1	height</source>
        <translation>Bezeichnung	ppm F2	ppm F1	Höhe</translation>
    </message>
    <message>
        <source>label	ppm	height</source>
        <translation>Bezeichnung	ppm	Höhe</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>An integral cannot be set to 0: all others are measured by it</source>
        <translation>Ein Integral lässt sich nicht auf 0 setzen: an ihm werden alle anderen gemessen</translation>
    </message>
    <message>
        <source>The points of %1 in sight are on the clipboard</source>
        <translation>Die sichtbaren Punkte von %1 sind in der Zwischenablage</translation>
    </message>
    <message>
        <source>The peaks of %1 in sight are on the clipboard</source>
        <translation>Die sichtbaren Peaks von %1 sind in der Zwischenablage</translation>
    </message>
</context>
<context>
    <name>Workbench::NmrPlot</name>
    <message>
        <source>No spectrum</source>
        <translation>Kein Spektrum</translation>
    </message>
    <message>
        <source>Spectrum %1</source>
        <translation>Spektrum %1</translation>
    </message>
</context>
<context>
    <name>Workbench::PairTable</name>
    <message>
        <source>Pairs of sites and measured lines</source>
        <translation>Paare aus Plätzen und gemessenen Linien</translation>
    </message>
    <message>
        <source>Site</source>
        <translation>Platz</translation>
    </message>
    <message>
        <source>Calculated</source>
        <translation>Berechnet</translation>
    </message>
    <message>
        <source>Measured</source>
        <translation>Gemessen</translation>
    </message>
    <message>
        <source>Difference</source>
        <translation>Differenz</translation>
    </message>
    <message>
        <source>Paired</source>
        <translation>Zuordnung</translation>
    </message>
    <message>
        <source>The site by its first atom, × the atoms that the space group maps onto it</source>
        <translation>Der Platz nach seinem ersten Atom, × die Atome, die die Raumgruppe auf ihn abbildet</translation>
    </message>
    <message>
        <source>Calculated shift, ppm: reference + slope · isotropic shielding</source>
        <translation>Berechnete chemische Verschiebung, ppm: Referenz + Steigung · isotrope Abschirmung</translation>
    </message>
    <message>
        <source>Position of the measured line, ppm; the mean where a site has several</source>
        <translation>Position der gemessenen Linie, ppm; der Mittelwert, wenn ein Platz mehrere hat</translation>
    </message>
    <message>
        <source>Calculated less measured, ppm</source>
        <translation>Berechnet minus gemessen, ppm</translation>
    </message>
    <message>
        <source>Assigned: this line was put onto the site, here or by the peak list. Shared: other sites have the same line</source>
        <translation>Zugeordnet: diese Linie wurde auf den Platz gelegt, hier oder durch die Peakliste. Geteilt: andere Plätze haben dieselbe Linie</translation>
    </message>
    <message>
        <source>shared</source>
        <translation>geteilt</translation>
    </message>
    <message>
        <source>no line</source>
        <translation>keine Linie</translation>
    </message>
    <message>
        <source>left out</source>
        <translation>weggelassen</translation>
    </message>
    <message>
        <source>This site has no line that could be moved</source>
        <translation>Dieser Platz hat keine Linie, die sich verschieben ließe</translation>
    </message>
    <message>
        <source>Lines are put onto sites; Delete lets a line find its site by itself</source>
        <translation>Linien werden auf Plätze gelegt; Entf lässt eine Linie ihren Platz von selbst finden</translation>
    </message>
    <message>
        <source>assigned</source>
        <translation>zugeordnet</translation>
    </message>
</context>
<context>
    <name>Workbench::PeakEditor</name>
    <message>
        <source>There is no spectrum whose peaks could be edited</source>
        <translation>Es gibt kein Spektrum, dessen Peaks bearbeitet werden könnten</translation>
    </message>
    <message>
        <source>A simulated spectrum&apos;s peaks follow from the calculation and cannot be edited: add a measured spectrum</source>
        <translation>Die Peaks eines simulierten Spektrums folgen aus der Rechnung und können nicht bearbeitet werden: fügen Sie ein gemessenes Spektrum hinzu</translation>
    </message>
    <message>
        <source>Editing the peaks of %1: click adds (Shift: right there), drag moves, Delete or right click removes, Ctrl+click counts once more, Esc ends</source>
        <translation>Peaks von %1 bearbeiten: Klick fügt hinzu (Umschalt: genau dort), Ziehen verschiebt, Entf oder Rechtsklick entfernt, Strg+Klick zählt einmal mehr, Esc beendet</translation>
    </message>
    <message>
        <source>Number of peaks: %1 measured, %2 simulated</source>
        <translation>Anzahl der Peaks: %1 gemessen, %2 simuliert</translation>
    </message>
    <message>
        <source>Peak at %1, counts %2 times</source>
        <translation>Peak bei %1, zählt %2-mal</translation>
    </message>
    <message>
        <source>Peak at %1</source>
        <translation>Peak bei %1</translation>
    </message>
    <message>
        <source>Move to %1</source>
        <translation>Verschieben nach %1</translation>
    </message>
    <message>
        <source>Move Peak</source>
        <translation>Peak verschieben</translation>
    </message>
    <message>
        <source>Peak moved to %1</source>
        <translation>Peak nach %1 verschoben</translation>
    </message>
    <message>
        <source>Count Peak</source>
        <translation>Peak zählen</translation>
    </message>
    <message>
        <source>Peak at %1 counts %2 times</source>
        <translation>Peak bei %1 zählt %2-mal</translation>
    </message>
    <message>
        <source>There is a peak at %1 already: Ctrl+click its mark to count it once more</source>
        <translation>Bei %1 ist schon ein Peak: Strg+Klick auf seine Marke zählt ihn einmal mehr</translation>
    </message>
    <message>
        <source>Add Peak</source>
        <translation>Peak hinzufügen</translation>
    </message>
    <message>
        <source>Peak added at %1</source>
        <translation>Peak bei %1 hinzugefügt</translation>
    </message>
    <message>
        <source>Remove Peak</source>
        <translation>Peak entfernen</translation>
    </message>
    <message>
        <source>Peak at %1 removed</source>
        <translation>Peak bei %1 entfernt</translation>
    </message>
    <message>
        <source>No peak is chosen: click one first</source>
        <translation>Kein Peak ist gewählt: klicken Sie zuerst einen an</translation>
    </message>
</context>
<context>
    <name>Workbench::PeakMenu</name>
    <message>
        <source>Edit &amp;Peaks</source>
        <translation>&amp;Peaks bearbeiten</translation>
    </message>
    <message>
        <source>Ctrl+Shift+E</source>
        <translation>Ctrl+Shift+E</translation>
    </message>
    <message>
        <source>Pic&amp;k Peaks...</source>
        <translation>Peaks &amp;suchen...</translation>
    </message>
    <message>
        <source>Ctrl+Shift+K</source>
        <translation>Ctrl+Shift+K</translation>
    </message>
    <message>
        <source>&amp;Count Equivalent Sites</source>
        <translation>Ä&amp;quivalente Plätze zählen</translation>
    </message>
    <message>
        <source>Each measured peak as often as the simulated spectrum has sites there</source>
        <translation>Jeden gemessenen Peak so oft, wie das simulierte Spektrum dort Plätze hat</translation>
    </message>
    <message>
        <source>There is no spectrum on the page</source>
        <translation>Auf der Seite ist kein Spektrum</translation>
    </message>
    <message>
        <source>There is no measured spectrum to pick peaks from</source>
        <translation>Es gibt kein gemessenes Spektrum, in dem Peaks zu suchen wären</translation>
    </message>
    <message>
        <source>Pick Peaks</source>
        <translation>Peaks suchen</translation>
    </message>
    <message>
        <source>There is no measured spectrum whose peaks could be counted</source>
        <translation>Es gibt kein gemessenes Spektrum, dessen Peaks gezählt werden könnten</translation>
    </message>
    <message>
        <source>The measured peaks are not as many as the simulated positions that differ. </source>
        <translation>Es gibt nicht so viele gemessene Peaks wie verschiedene simulierte Positionen. </translation>
    </message>
    <message>
        <source>Count Equivalent Sites</source>
        <translation>Äquivalente Plätze zählen</translation>
    </message>
</context>
<context>
    <name>Workbench::PickPeaksDialog</name>
    <message>
        <source>&amp;Count equivalent sites as the simulated spectrum does</source>
        <translation>Äquivalente Plätze wie im simulierten Spektrum &amp;zählen</translation>
    </message>
    <message>
        <source>Pick peaks</source>
        <translation>Peaks suchen</translation>
    </message>
    <message>
        <source>Spectrum:</source>
        <translation>Spektrum:</translation>
    </message>
    <message>
        <source>Above the &amp;noise:</source>
        <translation>Über dem &amp;Rauschen:</translation>
    </message>
    <message>
        <source>Least &amp;height:</source>
        <translation>Kleinste &amp;Höhe:</translation>
    </message>
    <message>
        <source>Least &amp;distance:</source>
        <translation>Kleinster &amp;Abstand:</translation>
    </message>
    <message>
        <source> standard deviations</source>
        <translation> Standardabweichungen</translation>
    </message>
    <message>
        <source> % of the highest peak</source>
        <translation> % des höchsten Peaks</translation>
    </message>
    <message>
        <source> points</source>
        <translation> Punkte</translation>
    </message>
    <message>
        <source>Positions found: %1
Number of peaks: %2 measured, %3 simulated</source>
        <translation>Gefundene Positionen: %1
Anzahl der Peaks: %2 gemessen, %3 simuliert</translation>
    </message>
</context>
<context>
    <name>Workbench::PluginManager</name>
    <message>
        <source>it is not a Qt plug-in</source>
        <translation>es ist kein Qt-Plug-in</translation>
    </message>
    <message>
        <source>its interface is &quot;%1&quot;, expected &quot;%2x&quot;</source>
        <translation>seine Schnittstelle ist „%1“, erwartet wurde „%2x“</translation>
    </message>
    <message>
        <source>its metadata lacks %1</source>
        <translation>in seinen Metadaten fehlt %1</translation>
    </message>
    <message>
        <source>there is no such directory</source>
        <translation>dieses Verzeichnis gibt es nicht</translation>
    </message>
    <message>
        <source>it refuses its own metadata, which state that it depends on %1</source>
        <translation>es lehnt seine eigenen Metadaten ab, nach denen es von %1 abhängt</translation>
    </message>
    <message>
        <source>its object does not have the interface that its metadata name</source>
        <translation>sein Objekt hat nicht die Schnittstelle, die seine Metadaten nennen</translation>
    </message>
</context>
<context>
    <name>Workbench::PowderCommands</name>
    <message>
        <source>Open a MAGRES file first: powder spectra are made from its table</source>
        <translation>Zuerst eine MAGRES-Datei öffnen: Pulverspektren entstehen aus ihrer Tabelle</translation>
    </message>
    <message>
        <source>The current table holds no calculation</source>
        <translation>Die aktuelle Tabelle enthält keine Rechnung</translation>
    </message>
    <message>
        <source>The current plot holds no powder spectrum</source>
        <translation>Der aktuelle Plot enthält kein Pulverspektrum</translation>
    </message>
    <message>
        <source>%1 powder</source>
        <translation>%1 Pulver</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Powder Spectrum</source>
        <translation>Pulverspektrum</translation>
    </message>
    <message>
        <source>The calculation that this spectrum is made from is no longer in the document.</source>
        <translation>Die Rechnung, aus der dieses Spektrum entsteht, ist nicht mehr im Dokument.</translation>
    </message>
    <message>
        <source>Edit Powder Spectrum</source>
        <translation>Pulverspektrum bearbeiten</translation>
    </message>
    <message>
        <source>Powder spectrum of %1</source>
        <translation>Pulverspektrum von %1</translation>
    </message>
</context>
<context>
    <name>Workbench::PowderDialog</name>
    <message>
        <source>One &amp;factor on all Cq as well</source>
        <translation>Auch einen gemeinsamen &amp;Faktor für alle Cq</translation>
    </message>
    <message>
        <source>Fit t&amp;o Measurement</source>
        <translation>An &amp;Messung anpassen</translation>
    </message>
    <message>
        <source>Powder Spectrum</source>
        <translation>Pulverspektrum</translation>
    </message>
    <message>
        <source>Static</source>
        <translation>Statisch</translation>
    </message>
    <message>
        <source>Magic angle, at a rate</source>
        <translation>Magischer Winkel, mit Rotorfrequenz</translation>
    </message>
    <message>
        <source>Magic angle, infinitely fast</source>
        <translation>Magischer Winkel, unendlich schnell</translation>
    </message>
    <message>
        <source>S&amp;pinning:</source>
        <translation>R&amp;otation:</translation>
    </message>
    <message>
        <source>R&amp;ate:</source>
        <translation>&amp;Rotorfrequenz:</translation>
    </message>
    <message>
        <source> Hz</source>
        <translation> Hz</translation>
    </message>
    <message>
        <source>Moves the reference and the line widths that are not 0 to the least squares of the measured curve</source>
        <translation>Bringt die Referenz und die Linienbreiten, die nicht 0 sind, auf die kleinsten Quadrate zur gemessenen Kurve</translation>
    </message>
    <message>
        <source>&amp;Measured:</source>
        <translation>&amp;Gemessen:</translation>
    </message>
    <message>
        <source>&amp;Nucleus:</source>
        <translation>&amp;Kern:</translation>
    </message>
    <message>
        <source>1&amp;H frequency:</source>
        <translation>1&amp;H-Frequenz:</translation>
    </message>
    <message>
        <source> MHz</source>
        <translation> MHz</translation>
    </message>
    <message>
        <source>&amp;Reference:</source>
        <translation>Refere&amp;nz:</translation>
    </message>
    <message>
        <source> ppm</source>
        <translation> ppm</translation>
    </message>
    <message>
        <source>S&amp;lope:</source>
        <translation>&amp;Steigung:</translation>
    </message>
    <message>
        <source>Fa&amp;ctor on Cq:</source>
        <translation>Faktor für &amp;Cq:</translation>
    </message>
    <message>
        <source>Loren&amp;tzian:</source>
        <translation>&amp;Lorentzbreite:</translation>
    </message>
    <message>
        <source>&amp;Gaussian:</source>
        <translation>G&amp;außbreite:</translation>
    </message>
    <message>
        <source>O12 ×12: -1234.5 ppm, Cq -12.345 MHz, η 0.00</source>
        <translation>O12 ×12: -1234.5 ppm, Cq -12.345 MHz, η 0.00</translation>
    </message>
    <message>
        <source>&amp;Sites:</source>
        <translation>&amp;Plätze:</translation>
    </message>
    <message>
        <source>%1: %2 ppm</source>
        <translation>%1: %2 ppm</translation>
    </message>
    <message>
        <source>, Cq %1 MHz, η %2</source>
        <translation>, Cq %1 MHz, η %2</translation>
    </message>
    <message>
        <source>&lt;b&gt;%1&lt;/b&gt;</source>
        <translation>&lt;b&gt;%1&lt;/b&gt;</translation>
    </message>
    <message>
        <source>No site is chosen</source>
        <translation>Kein Platz ist gewählt</translation>
    </message>
    <message>
        <source>This takes too long to be shown while values change; OK computes it</source>
        <translation>Dies dauert zu lange, um es beim Ändern der Werte zu zeigen; OK berechnet es</translation>
    </message>
    <message>
        <source>Powder</source>
        <translation>Pulver</translation>
    </message>
    <message>
        <source>Fitting to %1...</source>
        <translation>Anpassung an %1...</translation>
    </message>
    <message>
        <source>Reference: %1 ppm</source>
        <translation>Referenz: %1 ppm</translation>
    </message>
    <message>
        <source>Lorentzian: %1 Hz</source>
        <translation>Lorentzbreite: %1 Hz</translation>
    </message>
    <message>
        <source>Gaussian: %1 Hz</source>
        <translation>Gaußbreite: %1 Hz</translation>
    </message>
    <message>
        <source>Factor on Cq: %1</source>
        <translation>Faktor für Cq: %1</translation>
    </message>
    <message>
        <source>Deviation: %1 % of the highest point</source>
        <translation>Abweichung: %1 % des höchsten Punktes</translation>
    </message>
    <message>
        <source>The fit has not converged.</source>
        <translation>Die Anpassung ist nicht konvergiert.</translation>
    </message>
    <message>
        <source>Computing the powder spectrum...</source>
        <translation>Das Pulverspektrum wird berechnet...</translation>
    </message>
    <message>
        <source>All a&amp;bove 0.1 % of the highest point</source>
        <translation>Alles ü&amp;ber 0,1 % des höchsten Punkts</translation>
    </message>
    <message>
        <source>C&amp;urves of the sites beside their sum</source>
        <translation>K&amp;urven der Plätze neben ihrer Summe</translation>
    </message>
    <message>
        <source>Po&amp;ints:</source>
        <translation>Punk&amp;te:</translation>
    </message>
    <message>
        <source>to</source>
        <translation>bis</translation>
    </message>
    <message>
        <source>Rang&amp;e:</source>
        <translation>B&amp;ereich:</translation>
    </message>
    <message>
        <source>Of two to %1 sites</source>
        <translation>Bei zwei bis %1 Plätzen</translation>
    </message>
</context>
<context>
    <name>Workbench::RankDialog</name>
    <message>
        <source>&amp;Ignore the assignment of lines to sites</source>
        <translation>&amp;Zuordnung von Linien zu Plätzen ignorieren</translation>
    </message>
    <message>
        <source>Use reference s&amp;ets</source>
        <translation>&amp;Referenzsätze verwenden</translation>
    </message>
    <message>
        <source>Rank Structures</source>
        <translation>Strukturen ordnen</translation>
    </message>
    <message>
        <source>Measured</source>
        <translation>Gemessen</translation>
    </message>
    <message>
        <source>Nucleus</source>
        <translation>Kern</translation>
    </message>
    <message>
        <source>Error σ, ppm</source>
        <translation>Fehler σ, ppm</translation>
    </message>
    <message>
        <source>Root mean square error of calculated shifts; 0: not known</source>
        <translation>Wurzel des mittleren quadratischen Fehlers der berechneten chemischen Verschiebungen; 0: nicht bekannt</translation>
    </message>
    <message>
        <source>Of the &amp;Page</source>
        <translation>Von der &amp;Seite</translation>
    </message>
    <message>
        <source>The structures that are open</source>
        <translation>Die geöffneten Strukturen</translation>
    </message>
    <message>
        <source>&amp;Files...</source>
        <translation>&amp;Dateien...</translation>
    </message>
    <message>
        <source>Calculations, which are read without being opened</source>
        <translation>Rechnungen, die gelesen werden, ohne geöffnet zu werden</translation>
    </message>
    <message>
        <source>F&amp;older...</source>
        <translation>&amp;Ordner...</translation>
    </message>
    <message>
        <source>All calculations in a folder</source>
        <translation>Alle Rechnungen in einem Ordner</translation>
    </message>
    <message>
        <source>no groups</source>
        <translation>keine Gruppen</translation>
    </message>
    <message>
        <source>CH3</source>
        <translation>CH3</translation>
    </message>
    <message>
        <source>XH3</source>
        <translation>XH3</translation>
    </message>
    <message>
        <source>Groups of three hydrogens that turn fast enough to give one line</source>
        <translation>Gruppen aus drei Wasserstoffatomen, die sich schnell genug drehen, um eine einzige Linie zu geben</translation>
    </message>
    <message>
        <source>So many lines may be left out where more were measured than there are sites</source>
        <translation>So viele Linien dürfen weggelassen werden, wenn mehr gemessen wurden, als es Plätze gibt</translation>
    </message>
    <message>
        <source>Slope, and what is known of the reference, from the reference sets that were chosen</source>
        <translation>Steigung und was über die Referenz bekannt ist, aus den gewählten Referenzsätzen</translation>
    </message>
    <message>
        <source>&amp;Average:</source>
        <translation>&amp;Mittelung:</translation>
    </message>
    <message>
        <source>&amp;Leave out lines:</source>
        <translation>Linien &amp;weglassen:</translation>
    </message>
    <message>
        <source>&amp;Rank</source>
        <translation>Ord&amp;nen</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Save Table...</source>
        <translation>Tabelle s&amp;peichern...</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message numerus="yes">
        <source>%1: %n line(s)</source>
        <translation>
            <numerusform>%1: %n Linie</numerusform>
            <numerusform>%1: %n Linien</numerusform>
        </translation>
    </message>
    <message>
        <source>Of which nucleus the lines are</source>
        <translation>Von welchem Kern die Linien sind</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
    <message numerus="yes">
        <source>Candidates: the %n structure(s) of the page</source>
        <translation>
            <numerusform>Kandidaten: die %n Struktur der Seite</numerusform>
            <numerusform>Kandidaten: die %n Strukturen der Seite</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Candidates: %n file(s) in %1</source>
        <translation>
            <numerusform>Kandidaten: %n Datei in %1</numerusform>
            <numerusform>Kandidaten: %n Dateien in %1</numerusform>
        </translation>
    </message>
    <message>
        <source>There is no calculation in %1</source>
        <translation>In %1 gibt es keine Rechnung</translation>
    </message>
    <message>
        <source>Candidates</source>
        <translation>Kandidaten</translation>
    </message>
    <message>
        <source>Calculations (*.magres);;All files (*)</source>
        <translation>Rechnungen (*.magres);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Folder of Candidates</source>
        <translation>Ordner der Kandidaten</translation>
    </message>
    <message>
        <source>Of which nucleus is %1? Choose it in the list</source>
        <translation>Von welchem Kern ist %1? In der Liste wählen</translation>
    </message>
    <message>
        <source>Two measurements are of %1: choose one of them</source>
        <translation>Zwei Messungen sind von %1: eine davon wählen</translation>
    </message>
    <message>
        <source>Choose a measurement in the list</source>
        <translation>Eine Messung in der Liste wählen</translation>
    </message>
    <message>
        <source>Several nuclei are weighed by their errors: give the σ of each</source>
        <translation>Mehrere Kerne werden mit ihren Fehlern gewichtet: für jeden das σ angeben</translation>
    </message>
    <message>
        <source>There is no structure on the page</source>
        <translation>Auf der Seite ist keine Struktur</translation>
    </message>
    <message>
        <source>Ranking...</source>
        <translation>Strukturen werden geordnet...</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Cancelled: %1 of %2 structures were compared</source>
        <translation>Abgebrochen: %1 von %2 Strukturen wurden verglichen</translation>
    </message>
    <message numerus="yes">
        <source>, %n failed: the last column says why</source>
        <translation>
            <numerusform>, %n fehlgeschlagen: die letzte Spalte sagt, warum</numerusform>
            <numerusform>, %n fehlgeschlagen: die letzte Spalte sagt, warum</numerusform>
        </translation>
    </message>
    <message>
        <source>. Probabilities are relative to this pool: they say nothing about structures that are not in it</source>
        <translation>. Wahrscheinlichkeiten gelten relativ zu dieser Auswahl: sie sagen nichts über Strukturen, die nicht darin sind</translation>
    </message>
    <message>
        <source>There is no measurement in one dimension on the page: add one first</source>
        <translation>Auf der Seite ist keine Messung in einer Dimension: zuerst eine hinzufügen</translation>
    </message>
    <message>
        <source>Save Table</source>
        <translation>Tabelle speichern</translation>
    </message>
    <message>
        <source>%1 is written</source>
        <translation>%1 ist geschrieben</translation>
    </message>
    <message>
        <source>The table cannot be saved</source>
        <translation>Die Tabelle kann nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Text table</source>
        <translation>Texttabelle</translation>
    </message>
    <message numerus="yes">
        <source>%n structure(s)</source>
        <translation>
            <numerusform>%n Struktur</numerusform>
            <numerusform>%n Strukturen</numerusform>
        </translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message numerus="yes">
        <source> (and %n more)</source>
        <translation>
            <numerusform> (und %n weitere)</numerusform>
            <numerusform> (und %n weitere)</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is no MAGRES file by its content and is left out</source>
        <translation>%1 ist dem Inhalt nach keine MAGRES-Datei und wird weggelassen</translation>
    </message>
    <message>
        <source>Rank</source>
        <translation>Rang</translation>
    </message>
</context>
<context>
    <name>Workbench::RankModel</name>
    <message>
        <source>Structure</source>
        <translation>Struktur</translation>
    </message>
    <message>
        <source>A click opens it beside the measurement</source>
        <translation>Ein Klick öffnet sie neben der Messung</translation>
    </message>
    <message>
        <source>RMSD %1</source>
        <translation>RMSD %1</translation>
    </message>
    <message>
        <source>Root mean square difference, ppm, with the reference that fits best</source>
        <translation>Wurzel der mittleren quadratischen Differenz, ppm, mit der am besten passenden Referenz</translation>
    </message>
    <message>
        <source>Reference %1</source>
        <translation>Referenz %1</translation>
    </message>
    <message>
        <source>That fits best, ppm</source>
        <translation>Die am besten passende, ppm</translation>
    </message>
    <message>
        <source>Pairing %1</source>
        <translation>Zuordnung %1</translation>
    </message>
    <message>
        <source>How lines and sites were paired</source>
        <translation>Wie Linien und Plätze einander zugeordnet wurden</translation>
    </message>
    <message>
        <source>χ²/dof</source>
        <translation>χ²/dof</translation>
    </message>
    <message>
        <source>Sum of squared differences over their expected squares, by degrees of freedom; about 1 for a structure that is right</source>
        <translation>Summe der quadrierten Differenzen, bezogen auf ihre erwarteten Quadrate, je Freiheitsgrad; etwa 1 bei einer richtigen Struktur</translation>
    </message>
    <message>
        <source>p</source>
        <translation>p</translation>
    </message>
    <message>
        <source>Of a χ² as large by chance; below 0.001 the structure fits badly, whatever its rank</source>
        <translation>Für ein zufällig ebenso großes χ²; unter 0.001 passt die Struktur schlecht, gleich welchen Rang sie hat</translation>
    </message>
    <message>
        <source>Probability</source>
        <translation>Wahrscheinlichkeit</translation>
    </message>
    <message>
        <source>In this pool, given that one of its structures is right</source>
        <translation>In dieser Auswahl, vorausgesetzt, dass eine ihrer Strukturen richtig ist</translation>
    </message>
    <message>
        <source>with 1.5 σ</source>
        <translation>mit 1.5 σ</translation>
    </message>
    <message>
        <source>The same with errors half as large again</source>
        <translation>Dasselbe mit anderthalbmal so großen Fehlern</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Passung</translation>
    </message>
    <message>
        <source>Bad: the differences are larger than errors explain</source>
        <translation>Schlecht: die Differenzen sind größer, als Fehler erklären</translation>
    </message>
    <message>
        <source>χ²/dof %1</source>
        <translation>χ²/dof %1</translation>
    </message>
    <message>
        <source>p %1</source>
        <translation>p %1</translation>
    </message>
    <message>
        <source>bad</source>
        <translation>schlecht</translation>
    </message>
</context>
<context>
    <name>Workbench::RecentFiles</name>
    <message>
        <source>Open &amp;Recent</source>
        <translation>Zuletzt &amp;geöffnet</translation>
    </message>
    <message>
        <source>&amp;Clear List</source>
        <translation>&amp;Liste leeren</translation>
    </message>
</context>
<context>
    <name>Workbench::SpectrumCommands</name>
    <message>
        <source>Open a MAGRES file first: spectra are made from its table</source>
        <translation>Zuerst eine MAGRES-Datei öffnen: Spektren entstehen aus ihrer Tabelle</translation>
    </message>
    <message>
        <source>No plug-in that makes spectra is loaded</source>
        <translation>Es ist kein Plug-in geladen, das Spektren erzeugt</translation>
    </message>
    <message>
        <source>The current plot holds no simulated spectrum</source>
        <translation>Der aktuelle Plot enthält kein simuliertes Spektrum</translation>
    </message>
    <message>
        <source>There is no plot on the page: create a spectrum and add a measurement to it</source>
        <translation>Auf der Seite ist kein Plot: ein Spektrum erzeugen und eine Messung hinzufügen</translation>
    </message>
    <message>
        <source>It needs one simulated spectrum and one measurement in the plot; the current plot holds %1 and %2</source>
        <translation>Nötig sind ein simuliertes Spektrum und eine Messung im Plot; der aktuelle Plot enthält %1 und %2</translation>
    </message>
    <message>
        <source>Computing the spectrum...</source>
        <translation>Das Spektrum wird berechnet...</translation>
    </message>
    <message>
        <source>The plug-in of this table makes no spectra</source>
        <translation>Das Plug-in dieser Tabelle erzeugt keine Spektren</translation>
    </message>
    <message>
        <source>Fitting the reference...</source>
        <translation>Die Referenz wird angepasst...</translation>
    </message>
    <message>
        <source>Fit Range</source>
        <translation>Bereich anpassen</translation>
    </message>
    <message>
        <source>%1 is as it was: it could not be computed anew</source>
        <translation>%1 ist wie zuvor: eine neue Berechnung war nicht möglich</translation>
    </message>
    <message>
        <source>%1 is computed in the range of its lines</source>
        <translation>%1 ist im Bereich der eigenen Linien berechnet</translation>
    </message>
    <message>
        <source>Many Points</source>
        <translation>Viele Punkte</translation>
    </message>
    <message>
        <source>The spectrum has %L1 million points. To compute it again can take minutes. Go on?</source>
        <translation>Das Spektrum hat %L1 Millionen Punkte. Es neu zu berechnen kann Minuten dauern. Fortfahren?</translation>
    </message>
    <message>
        <source>A powder spectrum is fitted where it is edited</source>
        <translation>Ein Pulverspektrum wird dort angepasst, wo es bearbeitet wird</translation>
    </message>
    <message>
        <source>Plot of Its Own for %1</source>
        <translation>Eigener Plot für %1</translation>
    </message>
    <message>
        <source>%1 has a plot of its own now</source>
        <translation>%1 hat jetzt einen eigenen Plot</translation>
    </message>
    <message>
        <source>The measurement is of other nuclei or dimensions than the simulated spectrum</source>
        <translation>Die Messung ist von anderen Kernen oder Dimensionen als das simulierte Spektrum</translation>
    </message>
</context>
<context>
    <name>Workbench::StackMenu</name>
    <message>
        <source>Active &amp;Spectrum</source>
        <translation>&amp;Aktives Spektrum</translation>
    </message>
    <message>
        <source>Remo&amp;ve Spectrum</source>
        <translation>Spektrum ent&amp;fernen</translation>
    </message>
    <message>
        <source>Add &amp;Experimental Spectrum...</source>
        <translation>&amp;Experimentelles Spektrum hinzufügen...</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Nächstes</translation>
    </message>
    <message>
        <source>Ctrl+PgDown</source>
        <translation>Ctrl+PgDown</translation>
    </message>
    <message>
        <source>&amp;Previous</source>
        <translation>&amp;Voriges</translation>
    </message>
    <message>
        <source>Ctrl+PgUp</source>
        <translation>Ctrl+PgUp</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Add Experimental Spectrum</source>
        <translation>Experimentelles Spektrum hinzufügen</translation>
    </message>
    <message numerus="yes">
        <source>%1: %n peak(s) added</source>
        <translation>
            <numerusform>%1: %n Peak hinzugefügt</numerusform>
            <numerusform>%1: %n Peaks hinzugefügt</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 cannot be added</source>
        <translation>%1 kann nicht hinzugefügt werden</translation>
    </message>
    <message>
        <source>Active spectrum: %1</source>
        <translation>Aktives Spektrum: %1</translation>
    </message>
    <message>
        <source>Spectrum</source>
        <translation>Spektrum</translation>
    </message>
    <message numerus="yes">
        <source>%1 has a plot of its own; a spectrum that is created now joins it. %n peak(s).</source>
        <translation>
            <numerusform>%1 hat einen eigenen Plot; ein Spektrum, das jetzt erzeugt wird, kommt dazu. %n Peak.</numerusform>
            <numerusform>%1 hat einen eigenen Plot; ein Spektrum, das jetzt erzeugt wird, kommt dazu. %n Peaks.</numerusform>
        </translation>
    </message>
    <message>
        <source>Add Bruker &amp;Folder...</source>
        <translation>Bruker-&amp;Ordner hinzufügen...</translation>
    </message>
    <message>
        <source>Add Bruker Folder</source>
        <translation>Bruker-Ordner hinzufügen</translation>
    </message>
    <message>
        <source>%1 was not opened</source>
        <translation>%1 wurde nicht geöffnet</translation>
    </message>
    <message>
        <source>%1 is a spectrum of %2, which the plot does not show</source>
        <translation>%1 ist ein Spektrum von %2, das die Grafik nicht zeigt</translation>
    </message>
    <message>
        <source>%1 has a plot of its own: its axes lie the other way round. A spectrum that is created with %2 as its direct nucleus (F2) joins it.</source>
        <translation>%1 hat einen eigenen Plot: die Achsen liegen andersherum. Ein Spektrum, das mit %2 als direktem Kern (F2) erzeugt wird, kommt hinzu.</translation>
    </message>
</context>
<context>
    <name>Workbench::StartHints</name>
    <message>
        <source>&lt;h2&gt;Nothing is open&lt;/h2&gt;&lt;p&gt;Drop MAGRES files, measured spectra or their folders here, or begin with one of these:&lt;/p&gt;</source>
        <translation>&lt;h2&gt;Nichts ist geöffnet&lt;/h2&gt;&lt;p&gt;MAGRES-Dateien, gemessene Spektren oder deren Ordner hier ablegen oder mit einem von diesen beginnen:&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Open...</source>
        <translation>Öffnen...</translation>
    </message>
    <message>
        <source>calculations (*.magres), measurements, documents</source>
        <translation>Rechnungen (*.magres), Messungen, Dokumente</translation>
    </message>
    <message>
        <source>Sample: %1</source>
        <translation>Beispiel: %1</translation>
    </message>
    <message>
        <source>Recent: %1</source>
        <translation>Zuletzt geöffnet: %1</translation>
    </message>
    <message>
        <source>a molecular crystal: shieldings and field gradients</source>
        <translation>ein Molekülkristall: Abschirmungen und Feldgradienten</translation>
    </message>
    <message>
        <source>a measured ¹³C spectrum to go with it</source>
        <translation>ein gemessenes ¹³C-Spektrum dazu</translation>
    </message>
    <message>
        <source>the sample cannot be written there</source>
        <translation>das Beispiel kann dort nicht geschrieben werden</translation>
    </message>
</context>
<context>
    <name>Workbench::TableItem</name>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message numerus="yes">
        <source>and %n more row(s)</source>
        <translation>
            <numerusform>und %n weitere Zeile</numerusform>
            <numerusform>und %n weitere Zeilen</numerusform>
        </translation>
    </message>
    <message>
        <source>Filter: C   C2..C10   iso&gt;100   cq=0.1..2</source>
        <translation>Filter: C   C2..C10   iso&gt;100   cq=0.1..2</translation>
    </message>
    <message>
        <source>Filter of the table&apos;s rows</source>
        <translation>Filter der Tabellenzeilen</translation>
    </message>
    <message>
        <source>Filter Rows</source>
        <translation>Zeilen filtern</translation>
    </message>
    <message>
        <source>not understood</source>
        <translation>nicht zu verstehen</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>of the rows with %1</source>
        <translation>von den Zeilen mit %1</translation>
    </message>
    <message>
        <source>&amp;Columns</source>
        <translation>&amp;Spalten</translation>
    </message>
    <message>
        <source>A table has at least one column</source>
        <translation>Eine Tabelle hat mindestens eine Spalte</translation>
    </message>
</context>
<context>
    <name>Workbench::TableModel</name>
    <message>
        <source>Chemical element</source>
        <translation>Chemisches Element</translation>
    </message>
    <message>
        <source>The sites&apos; labels in the file</source>
        <translation>Die Bezeichnungen der Plätze in der Datei</translation>
    </message>
    <message>
        <source>Isotropic shielding, ppm
(σ₁₁ + σ₂₂ + σ₃₃) / 3</source>
        <translation>Isotrope Abschirmung, ppm
(σ₁₁ + σ₂₂ + σ₃₃) / 3</translation>
    </message>
    <message>
        <source>Anisotropy of the shielding, signed, ppm
σzz − (σxx + σyy) / 2
with |σzz − iso| ≥ |σxx − iso| ≥ |σyy − iso|</source>
        <translation>Anisotropie der Abschirmung, mit Vorzeichen, ppm
σzz − (σxx + σyy) / 2
mit |σzz − iso| ≥ |σxx − iso| ≥ |σyy − iso|</translation>
    </message>
    <message>
        <source>Asymmetry of the shielding, 0 to 1
(σyy − σxx) / (σzz − iso)</source>
        <translation>Asymmetrie der Abschirmung, 0 bis 1
(σyy − σxx) / (σzz − iso)</translation>
    </message>
    <message>
        <source>Magnitude of the largest component of the electric field gradient, atomic units
|Vzz|</source>
        <translation>Betrag der größten Komponente des elektrischen Feldgradienten, atomare Einheiten
|Vzz|</translation>
    </message>
    <message>
        <source>Asymmetry of the electric field gradient, 0 to 1
(|Vxx| − |Vyy|) / |Vzz|</source>
        <translation>Asymmetrie des elektrischen Feldgradienten, 0 bis 1
(|Vxx| − |Vyy|) / |Vzz|</translation>
    </message>
    <message>
        <source>Quadrupolar coupling constant, MHz, of the isotope in the cell&apos;s tooltip
|Vzz| · Q · 2.3489 with Q in fm²: the sign is that of Q</source>
        <translation>Quadrupolkopplungskonstante, MHz, des Isotops im Tooltip der Zelle
|Vzz| · Q · 2.3489 mit Q in fm²: das Vorzeichen ist das von Q</translation>
    </message>
</context>
<context>
    <name>Workbench::WMainWindow</name>
    <message>
        <source>Wheel zooms, drag marks what to show, double click shows all; F1 tells more</source>
        <translation>Mausrad zoomt, Ziehen markiert, was gezeigt wird, Doppelklick zeigt alles; mehr mit F1</translation>
    </message>
    <message>
        <source>Opening files...</source>
        <translation>Dateien werden geöffnet...</translation>
    </message>
    <message>
        <source>Opening %1</source>
        <translation>%1 wird geöffnet</translation>
    </message>
    <message>
        <source>Cancelled: %1 of %2 files are open</source>
        <translation>Abgebrochen: %1 von %2 Dateien sind geöffnet</translation>
    </message>
    <message>
        <source>%1 is open</source>
        <translation>%1 ist geöffnet</translation>
    </message>
    <message>
        <source>%1 cannot be opened</source>
        <translation>%1 kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>%1

%2</source>
        <translation>%1

%2</translation>
    </message>
    <message>
        <source>&amp;Spectrum</source>
        <translation>&amp;Spektrum</translation>
    </message>
    <message>
        <source>No spectrum on the page</source>
        <translation>Kein Spektrum auf der Seite</translation>
    </message>
    <message>
        <source>&amp;Table</source>
        <translation>&amp;Tabelle</translation>
    </message>
    <message>
        <source>No table on the page</source>
        <translation>Keine Tabelle auf der Seite</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>Ver&amp;größern</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>Ctrl+0</source>
        <translation>Ctrl+0</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Keyboard and Mouse...</source>
        <translation>&amp;Tastatur und Maus...</translation>
    </message>
    <message>
        <source>&amp;About and Plug-ins...</source>
        <translation>&amp;Über das Programm und Plug-ins...</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Neu</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>Ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Delete Item</source>
        <translation>Objekt &amp;löschen</translation>
    </message>
    <message>
        <source>All known files (%1)</source>
        <translation>Alle bekannten Dateien (%1)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Magres Workbench %1&lt;/h3&gt;&lt;p&gt;NMR parameters of crystals: molecules, tables and simulated spectra from calculated shieldings.&lt;/p&gt;&lt;h4&gt;Plug-ins&lt;/h4&gt;</source>
        <translation>&lt;h3&gt;Magres Workbench %1&lt;/h3&gt;&lt;p&gt;NMR-Parameter von Kristallen: Moleküle, Tabellen und simulierte Spektren aus berechneten Abschirmungen.&lt;/p&gt;&lt;h4&gt;Plug-ins&lt;/h4&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;None found.&lt;/p&gt;</source>
        <translation>&lt;p&gt;Keine gefunden.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;&lt;b&gt;%1&lt;/b&gt; %2&lt;br&gt;%3&lt;br&gt;&lt;small&gt;%4&lt;/small&gt;&lt;/p&gt;</source>
        <translation>&lt;p&gt;&lt;b&gt;%1&lt;/b&gt; %2&lt;br&gt;%3&lt;br&gt;&lt;small&gt;%4&lt;/small&gt;&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&lt;p&gt;&lt;b&gt;Not loaded:&lt;/b&gt; %1&lt;br&gt;%2&lt;/p&gt;</source>
        <translation>&lt;p&gt;&lt;b&gt;Nicht geladen:&lt;/b&gt; %1&lt;br&gt;%2&lt;/p&gt;</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>%1. %2</source>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>Workspace</source>
        <translation>Arbeitsfläche</translation>
    </message>
    <message>
        <source>Opening %1...</source>
        <translation>%1 wird geöffnet...</translation>
    </message>
    <message>
        <source>Create Spectrum</source>
        <translation>Spektrum erzeugen</translation>
    </message>
    <message>
        <source>A simulated spectrum of the current table</source>
        <translation>Ein simuliertes Spektrum der aktuellen Tabelle</translation>
    </message>
    <message>
        <source>Ctrl+Shift+N</source>
        <translation>Ctrl+Shift+N</translation>
    </message>
    <message>
        <source>Add Measurement</source>
        <translation>Messung hinzufügen</translation>
    </message>
    <message>
        <source>A measured spectrum or peak list, beside the simulated one or on its own</source>
        <translation>Ein gemessenes Spektrum oder eine Peakliste, neben dem simulierten oder allein</translation>
    </message>
    <message>
        <source>Ctrl+Shift+O</source>
        <translation>Ctrl+Shift+O</translation>
    </message>
    <message>
        <source>Auto Reference</source>
        <translation>Automatische Referenz</translation>
    </message>
    <message>
        <source>Fits the reference of the simulated spectrum to the measurement beside it</source>
        <translation>Passt die Referenz des simulierten Spektrums an die Messung daneben an</translation>
    </message>
    <message>
        <source>Ctrl+R</source>
        <translation>Ctrl+R</translation>
    </message>
    <message>
        <source>&amp;Molecule</source>
        <translation>&amp;Molekül</translation>
    </message>
    <message>
        <source>No molecule on the page</source>
        <translation>Kein Molekül auf der Seite</translation>
    </message>
    <message>
        <source>&amp;Fit Window</source>
        <translation>An &amp;Fenster anpassen</translation>
    </message>
    <message>
        <source>&amp;Arrange Items</source>
        <translation>Objekte an&amp;ordnen</translation>
    </message>
    <message>
        <source>Puts items that were moved by hand into their rows again</source>
        <translation>Stellt Objekte, die von Hand verschoben wurden, wieder in ihre Reihen</translation>
    </message>
    <message>
        <source>&amp;Page Preview</source>
        <translation>&amp;Seitenvorschau</translation>
    </message>
    <message>
        <source>Ctrl+Shift+P</source>
        <translation>Ctrl+Shift+P</translation>
    </message>
    <message>
        <source>&amp;User Guide</source>
        <translation>&amp;Benutzerhandbuch</translation>
    </message>
    <message>
        <source>Calculations, measured spectra and documents</source>
        <translation>Rechnungen, gemessene Spektren und Dokumente</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Takes the last change back</source>
        <translation>Nimmt die letzte Änderung zurück</translation>
    </message>
    <message>
        <source>there is nothing to take back</source>
        <translation>es gibt nichts zurückzunehmen</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Makes the change again that was taken back</source>
        <translation>Stellt die zurückgenommene Änderung wieder her</translation>
    </message>
    <message>
        <source>nothing was taken back</source>
        <translation>nichts wurde zurückgenommen</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <source>The workspace as wide as the window</source>
        <translation>Die Arbeitsfläche so breit wie das Fenster</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>The page, a spectrum or a table as a file</source>
        <translation>Die Seite, ein Spektrum oder eine Tabelle als Datei</translation>
    </message>
    <message>
        <source>there is nothing on the page</source>
        <translation>auf der Seite ist nichts</translation>
    </message>
    <message>
        <source>Open &amp;Folder...</source>
        <translation>&amp;Ordner öffnen...</translation>
    </message>
    <message>
        <source>A measured spectrum that is a folder of files</source>
        <translation>Ein gemessenes Spektrum, das ein Ordner mit Dateien ist</translation>
    </message>
    <message>
        <source>Open Sa&amp;mple</source>
        <translation>Be&amp;ispiel öffnen</translation>
    </message>
    <message>
        <source>Ctrl+Y</source>
        <translation>Ctrl+Y</translation>
    </message>
    <message>
        <source>Ctrl+Shift+Z</source>
        <translation>Ctrl+Shift+Z</translation>
    </message>
    <message>
        <source>&amp;Rename Item...</source>
        <translation>Objekt &amp;umbenennen...</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Ordner öffnen</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Title (empty: the item&apos;s own):</source>
        <translation>Titel (leer: der des Objekts selbst):</translation>
    </message>
    <message>
        <source>Powder Spectrum</source>
        <translation>Pulverspektrum</translation>
    </message>
    <message>
        <source>The powder line shapes of the current table&apos;s sites, static or spinning</source>
        <translation>Die Pulver-Linienformen der Plätze der aktuellen Tabelle, statisch oder mit Rotation</translation>
    </message>
    <message>
        <source>Ctrl+Shift+L</source>
        <translation>Ctrl+Shift+L</translation>
    </message>
    <message>
        <source>Create Powder Spectrum...</source>
        <translation>Pulverspektrum erzeugen...</translation>
    </message>
    <message>
        <source>Edit Powder Spectrum...</source>
        <translation>Pulverspektrum bearbeiten...</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) opened with doubts: the note under the title tells them</source>
        <translation>
            <numerusform>%n Datei mit Zweifeln geöffnet: Der Hinweis unter dem Titel nennt sie</numerusform>
            <numerusform>%n Dateien mit Zweifeln geöffnet: Der Hinweis unter dem Titel nennt sie</numerusform>
        </translation>
    </message>
    <message>
        <source>Doubts about the file</source>
        <translation>Zweifel an der Datei</translation>
    </message>
    <message>
        <source>Arrange Items</source>
        <translation>Objekte anordnen</translation>
    </message>
    <message>
        <source>It is not of a kind that is known here. Files that can be opened: %1</source>
        <translation>Diese Art von Datei ist hier nicht bekannt. Geöffnet werden können: %1</translation>
    </message>
</context>
<context>
    <name>Workbench::WorkBar</name>
    <message>
        <source>Tool Bar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>
Not now: %1</source>
        <translation>
Jetzt nicht: %1</translation>
    </message>
</context>
</TS>
