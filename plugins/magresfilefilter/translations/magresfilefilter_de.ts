<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_GB">
<context>
    <name>TMagresFileFilterPlugin</name>
    <message>
        <source>Peak %1 of the MAGRES spectrum has no position</source>
        <translation>Peak %1 des MAGRES-Spektrums hat keine Position</translation>
    </message>
    <message>
        <source>Peak %1 of the experimental spectrum has no position</source>
        <translation>Peak %1 des experimentellen Spektrums hat keine Position</translation>
    </message>
    <message>
        <source>Peak %1 of the MAGRES spectrum has no height</source>
        <translation>Peak %1 des MAGRES-Spektrums hat keine Höhe</translation>
    </message>
    <message>
        <source>The MAGRES spectrum has %1 compound peaks and the experimental spectrum has %2</source>
        <translation>Das MAGRES-Spektrum hat %1 Peaks der Verbindung, das experimentelle Spektrum %2</translation>
    </message>
    <message>
        <source>Direct dimension reference is changed from %1 ppm to %2 ppm</source>
        <translation>Die Referenz der direkten Dimension ist von %1 ppm auf %2 ppm geändert</translation>
    </message>
    <message>
        <source>Reference is changed from %1 ppm to %2 ppm</source>
        <translation>Die Referenz ist von %1 ppm auf %2 ppm geändert</translation>
    </message>
    <message>
        <source>

Old RMSD: %1 %2</source>
        <translation>

Alter RMSD: %1 %2</translation>
    </message>
    <message>
        <source>
New RMSD: %1 %2</source>
        <translation>
Neuer RMSD: %1 %2</translation>
    </message>
    <message>
        <source>
Indirect dimension reference is changed from %1 ppm to %2 ppm</source>
        <translation>
Die Referenz der indirekten Dimension ist von %1 ppm auf %2 ppm geändert</translation>
    </message>
    <message>
        <source>

Old RMSD. Direct dimension: %1 %2, indirect dimension: %3%4</source>
        <translation>

Alter RMSD. Direkte Dimension: %1 %2, indirekte Dimension: %3%4</translation>
    </message>
    <message>
        <source>
New RMSD: Direct dimension: %1 %2, indirect dimension: %3 %4</source>
        <translation>
Neuer RMSD: Direkte Dimension: %1 %2, indirekte Dimension: %3 %4</translation>
    </message>
    <message>
        <source>RMSD: %1 %2</source>
        <translation>RMSD: %1 %2</translation>
    </message>
    <message>
        <source>RMSD (direct dimension): %1 %2</source>
        <translation>RMSD (direkte Dimension): %1 %2</translation>
    </message>
    <message>
        <source>
RMSD (indirect dimension): %1 %2</source>
        <translation>
RMSD (indirekte Dimension): %1 %2</translation>
    </message>
    <message>
        <source>There is 1 spectrum in this plot. Two is expected</source>
        <translation>In diesem Plot ist 1 Spektrum. Es müssen zwei sein</translation>
    </message>
    <message>
        <source>There are %1 spectra in this plot. Two is expected</source>
        <translation>In diesem Plot sind %1 Spektren. Es müssen zwei sein</translation>
    </message>
    <message>
        <source>Neither of the spectra is generated from MAGRES</source>
        <translation>Keines der Spektren ist aus MAGRES-Daten erzeugt</translation>
    </message>
    <message>
        <source>Both spectra are generated from MAGRES. One should be experimental</source>
        <translation>Beide Spektren sind aus MAGRES-Daten erzeugt. Eines sollte experimentell sein</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>This function requires experimental and MAGRES spectra in the same stack. Both spectra should have the same number of the compound peaks.

%1</source>
        <translation>Diese Funktion braucht ein experimentelles und ein MAGRES-Spektrum im selben Stapel. Beide Spektren sollten gleich viele Peaks der Verbindung haben.

%1</translation>
    </message>
    <message>
        <source>New reference</source>
        <translation>Neue Referenz</translation>
    </message>
    <message>
        <source>RMSD</source>
        <translation>RMSD</translation>
    </message>
    <message>
        <source>The document has no MAGRES data</source>
        <translation>Das Dokument enthält keine MAGRES-Daten</translation>
    </message>
    <message>
        <source>Canceled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>Interrupted</source>
        <translation>Unterbrochen</translation>
    </message>
    <message>
        <source>The spectrum cannot be generated: %1</source>
        <translation>Das Spektrum kann nicht erzeugt werden: %1</translation>
    </message>
    <message>
        <source>The document has not taken the spectrum</source>
        <translation>Das Dokument hat das Spektrum nicht aufgenommen</translation>
    </message>
    <message>
        <source>The spectrum cannot be updated: %1</source>
        <translation>Das Spektrum kann nicht aktualisiert werden: %1</translation>
    </message>
    <message>
        <source>The active NMR spectrum is not a MAGRES spectrum</source>
        <translation>Das aktive NMR-Spektrum ist kein MAGRES-Spektrum</translation>
    </message>
    <message>
        <source>Units record in line %1 cannot be parsed</source>
        <translation>Der Eintrag für Einheiten in der Zeile %1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>Only Angstroms are supported as atom units but %1 is found</source>
        <translation>Für Atome wird nur die Einheit Angstrom unterstützt, gefunden wurde %1</translation>
    </message>
    <message>
        <source>Only ppm are supported for shielding but %1 is found</source>
        <translation>Für Abschirmungen wird nur ppm unterstützt, gefunden wurde %1</translation>
    </message>
    <message>
        <source>Lattice record in line %1 cannot be parsed</source>
        <translation>Der Gitter-Eintrag in der Zeile %1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>Lattice coordinate #1 in line %2 cannot be parsed</source>
        <translation>Die Gitterkoordinate #1 in der Zeile %2 ist nicht lesbar</translation>
    </message>
    <message>
        <source>Atom record in line %1 cannot be parsed</source>
        <translation>Der Atom-Eintrag in der Zeile %1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>Atom number in line %1 cannot be parsed</source>
        <translation>Die Nummer des Atoms in der Zeile %1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>Atom x-coordinate in line %1 cannot be parsed</source>
        <translation>Die x-Koordinate des Atoms in der Zeile %1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>Atom y-coordinate in line %1 cannot be parsed</source>
        <translation>Die y-Koordinate des Atoms in der Zeile %1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>Atom z-coordinate in line %1 cannot be parsed</source>
        <translation>Die z-Koordinate des Atoms in der Zeile %1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>Ms record in line %1 cannot be parsed</source>
        <translation>Der ms-Eintrag in der Zeile %1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>EFG record in line %1 cannot be parsed</source>
        <translation>Der EFG-Eintrag in der Zeile %1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>Number in line %1 cannot be parsed</source>
        <translation>Die Nummer in der Zeile %1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>Tensor element in line %1 cannot be parsed</source>
        <translation>Ein Tensorelement in der Zeile %1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>File %1 cannot be opened</source>
        <translation>Die Datei %1 kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Atom %1 has no chem. shift</source>
        <translation>Das Atom %1 hat keine chem. Verschiebung</translation>
    </message>
    <message>
        <source>A spectrum cannot have %1 points</source>
        <translation>Ein Spektrum kann nicht %1 Punkte haben</translation>
    </message>
    <message>
        <source>%1 data points are more than the %2 that a spectrum can have</source>
        <translation>%1 Datenpunkte sind mehr als die %2, die ein Spektrum haben kann</translation>
    </message>
    <message>
        <source>The spectrometer frequency must be above 0 MHz</source>
        <translation>Die Spektrometerfrequenz muss über 0 MHz liegen</translation>
    </message>
    <message>
        <source>The range of %1 is not finite</source>
        <translation>Der Bereich von %1 ist nicht endlich</translation>
    </message>
    <message>
        <source>The range of %1 lies below -1000000 ppm</source>
        <translation>Der Bereich von %1 liegt unter -1000000 ppm</translation>
    </message>
    <message>
        <source>There is not enough memory for %1 data points</source>
        <translation>Der Speicher reicht nicht für %1 Datenpunkte</translation>
    </message>
    <message>
        <source>MAGRES</source>
        <translation>MAGRES</translation>
    </message>
    <message>
        <source>Unknown error</source>
        <translation>Unbekannter Fehler</translation>
    </message>
    <message>
        <source>Atom %1 %2 has more than %3 bonds; are the coordinates in the unit that the file states?</source>
        <translation>Das Atom %1 %2 hat mehr als %3 Bindungen; stehen die Koordinaten in der Einheit, die die Datei nennt?</translation>
    </message>
    <message>
        <source>The file has more than %1 atoms blocks</source>
        <translation>Die Datei hat mehr als %1 atoms-Blöcke</translation>
    </message>
    <message>
        <source>Too many atoms lie too close together to make molecules whole; are the coordinates and the lattice in the units that the file states?</source>
        <translation>Zu viele Atome liegen zu dicht beieinander, um Moleküle zu vervollständigen; stehen Koordinaten und Gitter in den Einheiten, die die Datei nennt?</translation>
    </message>
</context>
<context>
    <name>WMagresDialog</name>
    <message>
        <source>MAGRES parameters</source>
        <translation>MAGRES-Parameter</translation>
    </message>
    <message>
        <source>Dimensions</source>
        <translation>Dimensionen</translation>
    </message>
    <message>
        <source>1D Spectrum</source>
        <translation>1D-Spektrum</translation>
    </message>
    <message>
        <source>2D Spectrum</source>
        <translation>2D-Spektrum</translation>
    </message>
    <message>
        <source>&lt;sup&gt;1&lt;/sup&gt;H Frequency:</source>
        <translation>&lt;sup&gt;1&lt;/sup&gt;H-Frequenz:</translation>
    </message>
    <message>
        <source>1H Frequency</source>
        <translation>1H-Frequenz</translation>
    </message>
    <message>
        <source> MHz</source>
        <translation> MHz</translation>
    </message>
    <message>
        <source>Average:</source>
        <translation>Mittelung:</translation>
    </message>
    <message>
        <source>None</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>CH3 only</source>
        <translation>nur CH3</translation>
    </message>
    <message>
        <source>all XH3</source>
        <translation>alle XH3</translation>
    </message>
    <message>
        <source>Direct dimension</source>
        <translation>Direkte Dimension</translation>
    </message>
    <message>
        <source>Range:</source>
        <translation>Bereich:</translation>
    </message>
    <message>
        <source>Range from, ppm</source>
        <translation>Bereich von, ppm</translation>
    </message>
    <message>
        <source>-</source>
        <translation>-</translation>
    </message>
    <message>
        <source>Range to, ppm</source>
        <translation>Bereich bis, ppm</translation>
    </message>
    <message>
        <source>ppm</source>
        <translation>ppm</translation>
    </message>
    <message>
        <source>Range in data</source>
        <translation>Bereich der Daten</translation>
    </message>
    <message>
        <source>Chemical shift =</source>
        <translation>Chem. Verschiebung =</translation>
    </message>
    <message>
        <source>Reference, ppm</source>
        <translation>Referenz, ppm</translation>
    </message>
    <message>
        <source>+</source>
        <translation>+</translation>
    </message>
    <message>
        <source>Slope</source>
        <translation>Steigung</translation>
    </message>
    <message>
        <source>* shielding</source>
        <translation>* Abschirmung</translation>
    </message>
    <message>
        <source>Line Width:</source>
        <translation>Linienbreite:</translation>
    </message>
    <message>
        <source> Hz</source>
        <translation> Hz</translation>
    </message>
    <message>
        <source>Points:</source>
        <translation>Punkte:</translation>
    </message>
    <message>
        <source>Nucleus:</source>
        <translation>Kern:</translation>
    </message>
    <message>
        <source>Include 2nd-order quadrupolar shift</source>
        <translation>Mit Quadrupolverschiebung 2. Ordnung</translation>
    </message>
    <message>
        <source>Indirect dimension</source>
        <translation>Indirekte Dimension</translation>
    </message>
    <message>
        <source>Correlations:</source>
        <translation>Korrelationen:</translation>
    </message>
    <message>
        <source>Strongest Dipolar Coupling</source>
        <translation>Stärkste Dipolkopplung</translation>
    </message>
    <message>
        <source>RSS Dipolar Coupling</source>
        <translation>Wurzel der Quadratsumme der Dipolkopplungen</translation>
    </message>
    <message>
        <source>Range in data: %1 / %2 ppm</source>
        <translation>Bereich der Daten: %L1 / %L2 ppm</translation>
    </message>
    <message>
        <source>Spectrum parameters</source>
        <translation>Spektrumsparameter</translation>
    </message>
</context>
<context>
    <name>WMagresQuadIsoDialog</name>
    <message>
        <source>Select quadrupolar isotope</source>
        <translation>Quadrupolares Isotop wählen</translation>
    </message>
    <message>
        <source>Element:</source>
        <translation>Element:</translation>
    </message>
    <message>
        <source>Quadrupolar Isotope:</source>
        <translation>Quadrupolares Isotop:</translation>
    </message>
</context>
<context>
    <name>WMagresTable</name>
    <message>
        <source>Element</source>
        <translation>Element</translation>
    </message>
    <message>
        <source>Labels</source>
        <translation>Bezeichnungen</translation>
    </message>
    <message>
        <source>Iso, ppm</source>
        <translation>Iso, ppm</translation>
    </message>
    <message>
        <source>Aniso, ppm</source>
        <translation>Aniso, ppm</translation>
    </message>
    <message>
        <source>eQ</source>
        <translation>eQ</translation>
    </message>
    <message>
        <source>%1(Q)</source>
        <translation>%1(Q)</translation>
    </message>
    <message>
        <source>Cq, MHz</source>
        <translation>Cq, MHz</translation>
    </message>
    <message>
        <source>MAGRES</source>
        <translation>MAGRES</translation>
    </message>
    <message>
        <source>Create spectrum...</source>
        <translation>Spektrum erzeugen...</translation>
    </message>
    <message>
        <source>Set Quadrupolar Isotope...</source>
        <translation>Quadrupolares Isotop festlegen...</translation>
    </message>
    <message>
        <source>Isotope: %1</source>
        <translation>Isotop: %1</translation>
    </message>
    <message>
        <source>MAGRES Table</source>
        <translation>MAGRES-Tabelle</translation>
    </message>
</context>
</TS>
