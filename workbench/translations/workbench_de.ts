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
        <source>%1 lines were measured, but the structure has only %2 sites for them</source>
        <translation>%1 Linien wurden gemessen, die Struktur hat dafür aber nur %2 Plätze</translation>
    </message>
    <message>
        <source>assigned</source>
        <translation>zugeordnet</translation>
    </message>
    <message>
        <source>equal</source>
        <translation>gleich</translation>
    </message>
    <message>
        <source>overlap</source>
        <translation>überlappend</translation>
    </message>
    <message>
        <source>unmatched</source>
        <translation>ohne Partner</translation>
    </message>
    <message>
        <source>%1 by counts</source>
        <translation>%1 nach Anzahlen</translation>
    </message>
    <message>
        <source>%1 assigned, %2</source>
        <translation>%1 zugeordnet, %2</translation>
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
        <source>a whole number from 1 to %1</source>
        <translation>eine ganze Zahl von 1 bis %1</translation>
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
        <source>Reference F1, ppm</source>
        <translation>Referenz F1, ppm</translation>
    </message>
    <message>
        <source>Offset F1, ppm</source>
        <translation>Änderung F1, ppm</translation>
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
        <source>this part ranks by %1D spectra, %2 by %3D ones</source>
        <translation>dieser Teil ordnet nach %1D-Spektren, %2 nach %3D-Spektren</translation>
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
        <source>no nucleus known here</source>
        <translation>keinem hier bekannten Kern</translation>
    </message>
    <message>
        <source>the plug-in cannot simulate %1</source>
        <translation>das Plug-in kann %1 nicht simulieren</translation>
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
        <translation>ein Element der Art „%1“ ist nicht bekannt</translation>
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
        <source>Spectra and peak lists (*.%1 peaklist.xml 1r 2rr)</source>
        <translation>Spektren und Peaklisten (*.%1 peaklist.xml 1r 2rr)</translation>
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
        <source>X values in Hz need the record ##.OBSERVE FREQUENCY=</source>
        <translation>X-Werte in Hz brauchen den Eintrag ##.OBSERVE FREQUENCY=</translation>
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
        <source>a JCAMP-DX file holds one dimension here and the spectrum has two; .csv holds both</source>
        <translation>eine JCAMP-DX-Datei nimmt hier eine Dimension auf, und das Spektrum hat zwei; .csv nimmt beide auf</translation>
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
        <source>the spectrum that begins here has no record ##XYDATA= or ##NTUPLES=</source>
        <translation>das Spektrum, das hier beginnt, hat keinen Eintrag ##XYDATA= oder ##NTUPLES=</translation>
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
        <source>this is a spectrum, a list of peaks was expected</source>
        <translation>dies ist ein Spektrum, eine Peakliste wurde erwartet</translation>
    </message>
    <message>
        <source>this is a list of 2D peaks, expected &quot;position[,height]&quot;</source>
        <translation>dies ist eine Liste von 2D-Peaks, erwartet wurde „position[,height]“</translation>
    </message>
    <message>
        <source>this is a list of 1D peaks, expected &quot;position,position_f1[,height]&quot;</source>
        <translation>dies ist eine Liste von 1D-Peaks, erwartet wurde „position,position_f1[,height]“</translation>
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
        <source>%1 lines above the table were passed over.</source>
        <translation>%1 Zeilen über der Tabelle wurden übergangen.</translation>
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
        <source>The positions are rounded by more than their step: a straight line was laid through them.</source>
        <translation>Die Positionen sind gröber gerundet als ihre Schrittweite: eine Gerade wurde durch sie gelegt.</translation>
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
        <source>Data points</source>
        <translation>Datenpunkte</translation>
    </message>
    <message>
        <source>JCAMP-DX spectrum</source>
        <translation>JCAMP-DX-Spektrum</translation>
    </message>
    <message>
        <source>Peaks and parameters</source>
        <translation>Peaks und Parameter</translation>
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
</context>
<context>
    <name>Workbench::ExportMenu</name>
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
        <source>SIMPSON Spin S&amp;ystem...</source>
        <translation>SIMPSON-Spins&amp;ystem...</translation>
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
        <source>SIMPSON Spin System</source>
        <translation>SIMPSON-Spinsystem</translation>
    </message>
    <message>
        <source>Nuclei, such as 13C, 1H. Of their atoms those in the selected rows of the table are taken, or all:</source>
        <translation>Kerne, etwa 13C, 1H. Von ihren Atomen werden die in den markierten Zeilen der Tabelle genommen oder alle:</translation>
    </message>
    <message>
        <source>SIMPSON input</source>
        <translation>SIMPSON-Eingabe</translation>
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
        <translation>zoomt um den Mauszeiger; über einer Achse nur diese (nur das aktive Element)</translation>
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
        <source>Page</source>
        <translation>Seite</translation>
    </message>
    <message>
        <source>Drag the title bar or the lower right corner</source>
        <translation>Titelleiste oder rechte untere Ecke ziehen</translation>
    </message>
    <message>
        <source>moves or resizes an item</source>
        <translation>verschiebt ein Element oder ändert seine Größe</translation>
    </message>
    <message>
        <source>Tab, Shift+Tab</source>
        <translation>Tab, Umschalt+Tab</translation>
    </message>
    <message>
        <source>next or previous item</source>
        <translation>nächstes oder voriges Element</translation>
    </message>
    <message>
        <source>Enter, menu key, right click</source>
        <translation>Eingabe, Menütaste, Rechtsklick</translation>
    </message>
    <message>
        <source>the item&apos;s menu</source>
        <translation>das Menü des Elements</translation>
    </message>
    <message>
        <source>Ctrl+wheel, Ctrl++, Ctrl+-, Ctrl+0</source>
        <translation>Strg+Mausrad, Strg++, Strg+-, Strg+0</translation>
    </message>
    <message>
        <source>zooms the page; page width</source>
        <translation>zoomt die Seite; Seitenbreite</translation>
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
    <name>Workbench::StackMenu</name>
    <message>
        <source>Active &amp;Spectrum</source>
        <translation>&amp;Aktives Spektrum</translation>
    </message>
    <message>
        <source>&amp;Remove Spectrum</source>
        <translation>Spektrum &amp;entfernen</translation>
    </message>
    <message>
        <source>Add &amp;Experimental Spectrum...</source>
        <translation>&amp;Experimentelles Spektrum hinzufügen...</translation>
    </message>
    <message>
        <source>Ctrl+Shift+O</source>
        <translation>Ctrl+Shift+O</translation>
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
        <source>There is no spectrum to add an experiment to: simulate one first</source>
        <translation>Es gibt kein Spektrum, dem ein Experiment hinzugefügt werden könnte: simulieren Sie zuerst eines</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Add Experimental Spectrum</source>
        <translation>Experimentelles Spektrum hinzufügen</translation>
    </message>
    <message>
        <source>There is no spectrum on the page to put %1 beside: simulate one first.</source>
        <translation>Auf der Seite ist kein Spektrum, neben das %1 gestellt werden könnte: simulieren Sie zuerst eines.</translation>
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
        <source>&amp;Page Width</source>
        <translation>&amp;Seitenbreite</translation>
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
        <translation>Element &amp;löschen</translation>
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
</context>
</TS>
