<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_GB" sourcelanguage="en_GB">
<context>
    <name>Texts</name>
    <message numerus="yes">
        <source>and %n more note(s)</source>
        <translation>
            <numerusform>and %n more note</numerusform>
            <numerusform>and %n more notes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Workbench::ComparePanel</name>
    <message numerus="yes">
        <source>%n line(s) left out</source>
        <translation>
            <numerusform>%n line left out</numerusform>
            <numerusform>%n lines left out</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Workbench::ContentsDock</name>
    <message numerus="yes">
        <source>%n peak(s)
in the plot &quot;%1&quot;; can be dragged onto another one</source>
        <translation>
            <numerusform>%n peak
in the plot &quot;%1&quot;; can be dragged onto another one</numerusform>
            <numerusform>%n peaks
in the plot &quot;%1&quot;; can be dragged onto another one</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Workbench::ExportMenu</name>
    <message numerus="yes">
        <source>%n site(s): %1</source>
        <translation>
            <numerusform>%n site: %1</numerusform>
            <numerusform>%n sites: %1</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Workbench::ItemNotes</name>
    <message numerus="yes">
        <source>%1 (and %n more doubt(s) about the file)</source>
        <translation>
            <numerusform>%1 (and %n more doubt about the file)</numerusform>
            <numerusform>%1 (and %n more doubts about the file)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Workbench::NmrItem</name>
    <message numerus="yes">
        <source>%n atom(s) selected</source>
        <translation>
            <numerusform>%n atom selected</numerusform>
            <numerusform>%n atoms selected</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Workbench::RankDialog</name>
    <message numerus="yes">
        <source>%1: %n line(s)</source>
        <translation>
            <numerusform>%1: %n line</numerusform>
            <numerusform>%1: %n lines</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Candidates: the %n structure(s) of the page</source>
        <translation>
            <numerusform>Candidates: the %n structure of the page</numerusform>
            <numerusform>Candidates: the %n structures of the page</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Candidates: %n file(s) in %1</source>
        <translation>
            <numerusform>Candidates: %n file in %1</numerusform>
            <numerusform>Candidates: %n files in %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n structure(s)</source>
        <translation>
            <numerusform>%n structure</numerusform>
            <numerusform>%n structures</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>, %n failed: the last column says why</source>
        <translation>
            <numerusform>, %n failed: the last column says why</numerusform>
            <numerusform>, %n failed: the last column says why</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> (and %n more)</source>
        <translation>
            <numerusform> (and %n more)</numerusform>
            <numerusform> (and %n more)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Workbench::StackMenu</name>
    <message numerus="yes">
        <source>%1: %n peak(s) added</source>
        <translation>
            <numerusform>%1: %n peak added</numerusform>
            <numerusform>%1: %n peaks added</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 has a plot of its own; a spectrum that is created now joins it. %n peak(s).</source>
        <translation>
            <numerusform>%1 has a plot of its own; a spectrum that is created now joins it. %n peak.</numerusform>
            <numerusform>%1 has a plot of its own; a spectrum that is created now joins it. %n peaks.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Workbench::TableItem</name>
    <message numerus="yes">
        <source>and %n more row(s)</source>
        <translation>
            <numerusform>and %n more row</numerusform>
            <numerusform>and %n more rows</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Workbench::WMainWindow</name>
    <message numerus="yes">
        <source>%n file(s) opened with doubts: the note under the title tells them</source>
        <translation>
            <numerusform>%n file opened with doubts: the note under the title tells them</numerusform>
            <numerusform>%n files opened with doubts: the note under the title tells them</numerusform>
        </translation>
    </message>
</context>
</TS>
