<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Terminal</name>
    <message>
        <source>Examples:
  vantora run --pages 1,4-6 report.pdf -o short.pdf
  vantora run --pages 1 *.pdf -d without-covers
  vantora watch inbox -d without-covers --pages 1
  vantora pages --choose last:2 report.pdf
  vantora info short.pdf
  vantora verify report.pdf short.pdf --pages 1,4-6
  vantora configure &quot;Delete Pages&quot;
  vantora desktop *.pdf

`vantora COMMAND --help`, or `vantora help COMMAND`, explains a command.</source>
        <translation>Beispiele:
  vantora run --pages 1,4-6 report.pdf -o short.pdf
  vantora run --pages 1 *.pdf -d without-covers
  vantora watch inbox -d without-covers --pages 1
  vantora pages --choose last:2 report.pdf
  vantora info short.pdf
  vantora verify report.pdf short.pdf --pages 1,4-6
  vantora configure &quot;Delete Pages&quot;
  vantora desktop *.pdf

`vantora BEFEHL --help` oder `vantora help BEFEHL` erklärt einen Befehl.</translation>
    </message>
    <message>
        <source>Runs actions over PDF documents; above all, removes pages.</source>
        <translation>Führt Aktionen über PDF-Dokumente aus; vor allem entfernt es
Seiten.</translation>
    </message>
    <message>
        <source>List the actions that are installed</source>
        <translation>Die Aktionen auflisten, die installiert sind</translation>
    </message>
    <message>
        <source>Print one JSON object per action</source>
        <translation>Je Aktion ein JSON-Objekt ausgeben</translation>
    </message>
    <message>
        <source>PDF files; - is standard input</source>
        <translation>PDF-Dateien; - ist die Standardeingabe</translation>
    </message>
    <message>
        <source>Further inputs, named in this file, one a line;
- is standard input</source>
        <translation>Weitere Eingaben, in dieser Datei genannt, je Zeile eine; -
ist die Standardeingabe</translation>
    </message>
    <message>
        <source>The names in it end with a zero byte, as find -print0 ends them</source>
        <translation>Die Namen darin enden mit einem Nullbyte, wie bei find -print0</translation>
    </message>
    <message>
        <source>An input that is a folder stands for the PDF files in
it and its subfolders</source>
        <translation>Eine Eingabe, die ein Ordner ist, steht für die PDF-Dateien in
ihm und seinen Unterordnern</translation>
    </message>
    <message>
        <source>Passwords, one a line, tried in order</source>
        <translation>Passwörter, je Zeile eines, der Reihe nach versucht</translation>
    </message>
    <message>
        <source>The pages that this names in each document go, such as last:2,
even, label:iv-x, bookmark:Index, text:Draft or size:A4;
several: the pages of any of them</source>
        <translation>Die Seiten entfernen, die diese Auswahl in jedem Dokument
benennt, etwa last:2, even, label:iv-x, bookmark:Index,
text:Draft oder size:A4; bei mehreren: die Seiten einer jeden</translation>
    </message>
    <message>
        <source>All pages go but those of this choice, or of any of several</source>
        <translation>Alle Seiten entfernen außer denen dieser Auswahl oder einer
von mehreren</translation>
    </message>
    <message>
        <source>Pages that --choose or --keep leave in any case</source>
        <translation>Seiten, die --choose oder --keep in jedem Fall lassen</translation>
    </message>
    <message>
        <source>Remove these pages, for example 1,4-6,9-15,21, or those that
a file names whose name follows an @; short for
--action &quot;Delete Pages&quot; --set byPageRangeTextEdit=RANGE</source>
        <translation>Diese Seiten entfernen, zum Beispiel 1,4-6,9-15,21, oder die,
die eine Datei nennt, deren Name auf ein @ folgt; kurz für
--action &quot;Delete Pages&quot; --set byPageRangeTextEdit=RANGE</translation>
    </message>
    <message>
        <source>Run this action; several run one after the other</source>
        <translation>Diese Aktion ausführen; mehrere laufen nacheinander</translation>
    </message>
    <message>
        <source>Run this action list: one of yours, or a file that ends in .xqq</source>
        <translation>Diese Aktionsliste ausführen: eine von Ihnen oder eine Datei,
die auf .xqq endet</translation>
    </message>
    <message>
        <source>Run this favourite of yours</source>
        <translation>Diesen Ihrer Favoriten ausführen</translation>
    </message>
    <message>
        <source>Run the action of this tool-settings file (.tsf)</source>
        <translation>Die Aktion dieser Datei mit Werkzeugeinstellungen (.tsf)
ausführen</translation>
    </message>
    <message>
        <source>An option of the action, favourite or settings
file before it; may be repeated</source>
        <translation>Eine Option der Aktion, des Favoriten oder der
Werkzeugeinstellungen davor; darf wiederholt werden</translation>
    </message>
    <message>
        <source>Worker processes (the number of processors);
0 does everything in this process</source>
        <translation>Arbeitsprozesse (die Anzahl der Prozessoren); 0 tut alles in
diesem Prozess</translation>
    </message>
    <message>
        <source>Give a document up after so long, such as 90 or 5m (5m)</source>
        <translation>Ein Dokument nach dieser Zeit aufgeben, etwa 90 oder 5m (5m)</translation>
    </message>
    <message>
        <source>The most memory for a worker, such as 512M or 2G
(what the machine has, divided by the workers)</source>
        <translation>Der meiste Speicher für einen Arbeitsprozess, etwa 512M oder
2G (was der Rechner hat, geteilt durch die Arbeitsprozesse)</translation>
    </message>
    <message>
        <source>Examples:
  vantora config
  vantora config --profile scans
  vantora config --example &gt;~/.config/vantora/vantora.toml

The file is vantora/vantora.toml in $XDG_CONFIG_HOME or ~/.config.</source>
        <translation>Beispiele:
  vantora config
  vantora config --profile scans
  vantora config --example &gt;~/.config/vantora/vantora.toml

Die Datei ist vantora/vantora.toml in $XDG_CONFIG_HOME oder ~/.config.</translation>
    </message>
    <message>
        <source>Show what your configuration says for runs</source>
        <translation>Zeigen, was Ihre Konfiguration für Läufe sagt</translation>
    </message>
    <message>
        <source>With the options of this profile</source>
        <translation>Mit den Optionen dieses Profils</translation>
    </message>
    <message>
        <source>Print one JSON object</source>
        <translation>Ein JSON-Objekt ausgeben</translation>
    </message>
    <message>
        <source>Print a file to begin with, with comments</source>
        <translation>Eine Datei für den Anfang ausgeben, mit Kommentaren</translation>
    </message>
    <message>
        <source>Let the options hold, too, that a profile of your
configuration has (vantora config lists them)</source>
        <translation>Auch die Optionen gelten lassen, die ein Profil Ihrer
Konfiguration hat (vantora config listet sie auf)</translation>
    </message>
    <message>
        <source>Pass over your configuration</source>
        <translation>Ihre Konfiguration übergehen</translation>
    </message>
    <message>
        <source>Examples:
  vantora configure &quot;Delete Pages&quot;
  vantora configure &quot;Delete Pages&quot; --set byPageRangeTextEdit=1,4-6 --inside main-window

Prints the options as a JSON object when they are accepted.
Exit status: 0 accepted, 1 not accepted, 2 wrong usage, 130 interrupted.</source>
        <translation>Beispiele:
  vantora configure &quot;Delete Pages&quot;
  vantora configure &quot;Delete Pages&quot; --set byPageRangeTextEdit=1,4-6 --inside main-window

Gibt die Optionen als JSON-Objekt aus, wenn sie angenommen werden.
Rückgabewert: 0 angenommen, 1 nicht angenommen, 2 falscher Aufruf, 130 unterbrochen.</translation>
    </message>
    <message>
        <source>Open the options dialog of an action</source>
        <translation>Den Optionsdialog einer Aktion öffnen</translation>
    </message>
    <message>
        <source>The action&apos;s name</source>
        <translation>Der Name der Aktion</translation>
    </message>
    <message>
        <source>An option that the dialog starts from; may be repeated</source>
        <translation>Eine Option, von der der Dialog ausgeht; darf wiederholt
werden</translation>
    </message>
    <message>
        <source>Leave out the button that adds the options to an action list</source>
        <translation>Die Schaltfläche weglassen, die die Optionen einer
Aktionsliste hinzufügt</translation>
    </message>
    <message>
        <source>Show it inside a window of the host: main-window or preview</source>
        <translation>Ihn in einem Fenster des Wirtsprogramms zeigen: main-window
oder preview</translation>
    </message>
    <message>
        <source>Examples:
  vantora desktop
  vantora desktop scans report.pdf

The same as vantora-desktop.</source>
        <translation>Beispiele:
  vantora desktop
  vantora desktop scans report.pdf

Dasselbe wie vantora-desktop.</translation>
    </message>
    <message>
        <source>Open a window: see the pages, mark what goes, run it</source>
        <translation>Ein Fenster öffnen: Seiten sehen, markieren, was geht,
ausführen</translation>
    </message>
    <message>
        <source>PDF files, and folders whose PDF files are added</source>
        <translation>PDF-Dateien, und Ordner, deren PDF-Dateien hinzugefügt werden</translation>
    </message>
    <message>
        <source>Open another window; else one that is there takes the files</source>
        <translation>Ein weiteres Fenster öffnen; sonst nimmt eines, das da ist,
die Dateien</translation>
    </message>
    <message>
        <source>Examples:
  vantora info report.pdf
  vantora info -v contract.pdf
  vantora info -r scans --json
  find . -name &apos;*.pdf&apos; -print0 | vantora info --files-from - -0 --json</source>
        <translation>Beispiele:
  vantora info report.pdf
  vantora info -v contract.pdf
  vantora info -r scans --json
  find . -name &apos;*.pdf&apos; -print0 | vantora info --files-from - -0 --json</translation>
    </message>
    <message>
        <source>Show what documents are</source>
        <translation>Zeigen, was Dokumente sind</translation>
    </message>
    <message>
        <source>List the attachments, layers and entries of the outline, too</source>
        <translation>Auch die Anhänge, Ebenen und Lesezeichen auflisten</translation>
    </message>
    <message>
        <source>Print one JSON object per document</source>
        <translation>Je Dokument ein JSON-Objekt ausgeben</translation>
    </message>
    <message>
        <source>Examples:
  vantora lists
  vantora lists add &quot;Clean scans&quot; --pages 1
  vantora lists add &quot;Clean scans&quot; --action &quot;Delete Pages&quot; --set byPageRangeTextEdit=4-6
  vantora lists show &quot;Clean scans&quot;
  vantora lists change &quot;Clean scans&quot; --step 2 --set byPageRangeTextEdit=5
  vantora lists remove &quot;Clean scans&quot; --step 2
  vantora lists remove &quot;Clean scans&quot;
  vantora run --list &quot;Clean scans&quot; scans/*.pdf -d clean</source>
        <translation>Beispiele:
  vantora lists
  vantora lists add &quot;Clean scans&quot; --pages 1
  vantora lists add &quot;Clean scans&quot; --action &quot;Delete Pages&quot; --set byPageRangeTextEdit=4-6
  vantora lists show &quot;Clean scans&quot;
  vantora lists change &quot;Clean scans&quot; --step 2 --set byPageRangeTextEdit=5
  vantora lists remove &quot;Clean scans&quot; --step 2
  vantora lists remove &quot;Clean scans&quot;
  vantora run --list &quot;Clean scans&quot; scans/*.pdf -d clean</translation>
    </message>
    <message>
        <source>Examples:
  vantora favourites
  vantora favourites add &quot;Without cover&quot; --pages 1
  vantora favourites show &quot;Without cover&quot;
  vantora favourites change &quot;Without cover&quot; --set byPageRangeTextEdit=1-2
  vantora favourites remove &quot;Without cover&quot;
  vantora run --favourite &quot;Without cover&quot; scans/*.pdf -d clean</source>
        <translation>Beispiele:
  vantora favourites
  vantora favourites add &quot;Without cover&quot; --pages 1
  vantora favourites show &quot;Without cover&quot;
  vantora favourites change &quot;Without cover&quot; --set byPageRangeTextEdit=1-2
  vantora favourites remove &quot;Without cover&quot;
  vantora run --favourite &quot;Without cover&quot; scans/*.pdf -d clean</translation>
    </message>
    <message>
        <source>Examples:
  vantora settings add cover.tsf --pages 1
  vantora settings show cover.tsf
  vantora settings change cover.tsf --set byPageRangeTextEdit=1-2
  vantora settings remove cover.tsf
  vantora run --settings cover.tsf scans/*.pdf -d clean</source>
        <translation>Beispiele:
  vantora settings add cover.tsf --pages 1
  vantora settings show cover.tsf
  vantora settings change cover.tsf --set byPageRangeTextEdit=1-2
  vantora settings remove cover.tsf
  vantora run --settings cover.tsf scans/*.pdf -d clean</translation>
    </message>
    <message>
        <source>List your action lists, or add, show, change or remove one</source>
        <translation>Ihre Aktionslisten auflisten, oder eine erweitern, zeigen,
ändern oder entfernen</translation>
    </message>
    <message>
        <source>List your favourites, or add, show, change or remove one</source>
        <translation>Ihre Favoriten auflisten, oder einen anlegen, zeigen, ändern
oder entfernen</translation>
    </message>
    <message>
        <source>Add, show, change or remove a tool-settings file</source>
        <translation>Eine Datei mit Werkzeugeinstellungen anlegen, zeigen, ändern
oder entfernen</translation>
    </message>
    <message>
        <source>An option of the step and its new value; may be repeated</source>
        <translation>Eine Option des Schritts und ihr neuer Wert; darf wiederholt
werden</translation>
    </message>
    <message>
        <source>The list&apos;s new category</source>
        <translation>Die neue Kategorie der Liste</translation>
    </message>
    <message>
        <source>The list&apos;s category (Default where it is new)</source>
        <translation>Die Kategorie der Liste (Default, wo sie neu ist)</translation>
    </message>
    <message>
        <source>Replace a list of that name instead of adding to it</source>
        <translation>Eine Liste dieses Namens ersetzen, statt ihr etwas
hinzuzufügen</translation>
    </message>
    <message>
        <source>Replace what there is of that name</source>
        <translation>Ersetzen, was es unter diesem Namen gibt</translation>
    </message>
    <message>
        <source>Show its steps with their options</source>
        <translation>Seine Schritte mit ihren Optionen zeigen</translation>
    </message>
    <message>
        <source>Make one, or add steps to an action list</source>
        <translation>Einen Eintrag anlegen, oder einer Aktionsliste Schritte
hinzufügen</translation>
    </message>
    <message>
        <source>Change options of it</source>
        <translation>Optionen davon ändern</translation>
    </message>
    <message>
        <source>Remove it</source>
        <translation>Ihn entfernen</translation>
    </message>
    <message>
        <source>Print a JSON object</source>
        <translation>Ein JSON-Objekt ausgeben</translation>
    </message>
    <message>
        <source>Only this step of it, from 1</source>
        <translation>Nur diesen Schritt davon, ab 1</translation>
    </message>
    <message>
        <source>Show which pages choices name</source>
        <translation>Zeigen, welche Seiten eine Auswahl benennt</translation>
    </message>
    <message>
        <source>Write a page for a browser to this file, with pictures of the
pages that would go beside their neighbours, to rescue some
and to save the list of ranges for run --ranges</source>
        <translation>Eine Seite für einen Browser in diese Datei schreiben, mit
Bildern der Seiten, die gehen würden, neben ihren Nachbarn, um
manche zu behalten und die Liste der Bereiche für run --ranges
zu speichern</translation>
    </message>
    <message>
        <source>Write what --json prints to this file, too</source>
        <translation>Was --json ausgibt, auch in diese Datei schreiben</translation>
    </message>
    <message>
        <source>Replace a sheet and a report that exist</source>
        <translation>Ein Blatt und einen Bericht ersetzen, die es schon gibt</translation>
    </message>
    <message>
        <source>Print one JSON object per document, with each page and why</source>
        <translation>Je Dokument ein JSON-Objekt ausgeben, mit jeder Seite und
warum</translation>
    </message>
    <message>
        <source>Examples:
  Remove pages 2 and 4 to 6, into a new file:
    vantora run --pages 2,4-6 report.pdf -o short.pdf
  See first which pages would go:
    vantora run --pages 2,4-6 --dry-run report.pdf
  Remove the first page of many files, into another folder:
    vantora run --pages 1 scans/*.pdf -d cut
  Remove it in the files themselves, the originals kept as NAME.pdf.bak:
    vantora run --pages 1 --in-place --backup scans/*.pdf
  Remove the last two pages of each file, and those that only say that they are blank:
    vantora run --choose last:2 --choose &quot;text:intentionally left blank&quot; *.pdf -d cut
  See such pages first, with pictures, and rescue some (vantora pages --help lists all choices):
    vantora pages --choose last:2 *.pdf --sheet look.html &gt;ranges.tsv
    vantora run --ranges ranges.tsv -d cut
  In a pipe:
    vantora run --pages 1 - -o - &lt;report.pdf &gt;short.pdf
  A whole folder; given again after an interruption, it goes on where it was:
    vantora run --pages 1 -r scans -d cut --report cut.jsonl --resume cut.jsonl
  What was saved from an options dialog:
    vantora run --list &quot;Clean scans&quot; scans/*.pdf -d clean
  As a profile of the configuration says (vantora config --example prints one to begin with):
    vantora run --profile scans *.pdf

Exit status: 0 every document is done, 1 at least one failed (the others are done) for
a reason that --accept-failures does not name, 2 wrong usage, 3 done with losses that
--salvage allowed, 130 interrupted.</source>
        <translation>Beispiele:
  Die Seiten 2 und 4 bis 6 entfernen, in eine neue Datei:
    vantora run --pages 2,4-6 report.pdf -o short.pdf
  Erst sehen, welche Seiten gehen würden:
    vantora run --pages 2,4-6 --dry-run report.pdf
  Die erste Seite vieler Dateien entfernen, in einen anderen Ordner:
    vantora run --pages 1 scans/*.pdf -d cut
  Sie in den Dateien selbst entfernen, die Originale bleiben als NAME.pdf.bak:
    vantora run --pages 1 --in-place --backup scans/*.pdf
  Die letzten zwei Seiten jeder Datei entfernen, und die, die nur sagen, dass sie leer sind:
    vantora run --choose last:2 --choose &quot;text:intentionally left blank&quot; *.pdf -d cut
  Solche Seiten erst sehen, mit Bildern, und manche behalten (vantora pages --help nennt jede
  Auswahl, die es gibt):
    vantora pages --choose last:2 *.pdf --sheet look.html &gt;ranges.tsv
    vantora run --ranges ranges.tsv -d cut
  In einer Pipe:
    vantora run --pages 1 - -o - &lt;report.pdf &gt;short.pdf
  Ein ganzer Ordner; nach einer Unterbrechung noch einmal gegeben, geht es dort weiter:
    vantora run --pages 1 -r scans -d cut --report cut.jsonl --resume cut.jsonl
  Was aus einem Optionsdialog gespeichert wurde:
    vantora run --list &quot;Clean scans&quot; scans/*.pdf -d clean
  Wie ein Profil der Konfiguration es sagt (vantora config --example gibt eines für den Anfang aus):
    vantora run --profile scans *.pdf

Rückgabewert: 0 jedes Dokument ist bearbeitet, 1 mindestens eines scheiterte (die anderen
sind bearbeitet) aus einem Grund, den --accept-failures nicht nennt, 2 falscher Aufruf,
3 bearbeitet mit Verlusten, die --salvage erlaubte, 130 unterbrochen.</translation>
    </message>
    <message>
        <source>Write a line of JSON to this file for each document as
it is finished</source>
        <translation>Je Dokument eine Zeile JSON in diese Datei schreiben, sobald
es fertig ist</translation>
    </message>
    <message>
        <source>With the SHA-256 of each input in it, which --resume compares</source>
        <translation>Mit der SHA-256 jeder Eingabe darin, die --resume vergleicht</translation>
    </message>
    <message>
        <source>Leave out what this report says is done, if input,
steps and output are still the same; may be repeated</source>
        <translation>Auslassen, was nach diesem Bericht bearbeitet ist, wenn
Eingabe, Schritte und Ergebnis noch dieselben sind; darf
wiederholt werden</translation>
    </message>
    <message>
        <source>Write the run&apos;s figures to this file at its end, as
Prometheus&apos; node exporter reads them (a name in .prom)</source>
        <translation>Am Ende die Kennzahlen des Laufs in diese Datei schreiben, wie
der node exporter von Prometheus sie liest (ein Name auf
.prom)</translation>
    </message>
    <message>
        <source>Do only the Ith of N shares of the inputs, such as 2/8</source>
        <translation>Nur den I-ten von N Anteilen der Eingaben bearbeiten, etwa 2/8</translation>
    </message>
    <message>
        <source>Verify, and write a certificate of what was removed, a
PDF/A; for several documents under a name as --name has
it, such as {name}-certificate.pdf</source>
        <translation>Prüfen, und eine Bescheinigung darüber schreiben, was entfernt
wurde, ein PDF/A; bei mehreren Dokumenten unter einem Namen
wie bei --name, etwa {name}-certificate.pdf</translation>
    </message>
    <message>
        <source>Write the SHA-256 of the outputs to this file, for
sha256sum -c</source>
        <translation>Die SHA-256 der Ergebnisse in diese Datei schreiben, für
sha256sum -c</translation>
    </message>
    <message>
        <source>Refuse signed documents: no signature would hold any more</source>
        <translation>Signierte Dokumente zurückweisen: keine Signatur würde mehr
gelten</translation>
    </message>
    <message>
        <source>Refuse documents where not all that was asked for can
be done, such as those that lack pages of the range</source>
        <translation>Dokumente zurückweisen, bei denen nicht alles Verlangte getan
werden kann, etwa solche, denen Seiten des Bereichs fehlen</translation>
    </message>
    <message>
        <source>Write an output only when it is verified that removed
pages are gone and the rest is as it was</source>
        <translation>Ein Ergebnis nur schreiben, wenn geprüft ist, dass entfernte
Seiten weg sind und der Rest ist, wie er war</translation>
    </message>
    <message>
        <source>Keep what can be kept of damaged documents; each loss is
a warning with its page, and the exit status is 3</source>
        <translation>Von beschädigten Dokumenten behalten, was zu behalten ist;
jeder Verlust ist eine Warnung mit seiner Seite, und der
Rückgabewert ist 3</translation>
    </message>
    <message>
        <source>Where every page would go: leave a &quot;blank&quot; one, &quot;skip&quot; the
document or &quot;fail&quot; (blank; with --in-place or --strict, fail)</source>
        <translation>Wo jede Seite gehen würde: eine leere lassen (&quot;blank&quot;), das
Dokument auslassen (&quot;skip&quot;) oder scheitern (&quot;fail&quot;) (blank;
mit --in-place oder --strict fail)</translation>
    </message>
    <message>
        <source>Failures that don&apos;t count for the exit status, such as
empty,password-needed; the summary names their kinds</source>
        <translation>Fehlschläge, die für den Rückgabewert nicht zählen, etwa
empty,password-needed; die Zusammenfassung nennt ihre Arten</translation>
    </message>
    <message>
        <source>Print one JSON object per document on standard output,
and one that sums up</source>
        <translation>Je Dokument ein JSON-Objekt auf die Standardausgabe schreiben,
und eines, das zusammenfasst</translation>
    </message>
    <message>
        <source>Print nothing but errors</source>
        <translation>Nichts als Fehler ausgeben</translation>
    </message>
    <message>
        <source>Say, too, what stays of each document and may repeat what
removed pages said, such as attachments and metadata</source>
        <translation>Auch sagen, was von jedem Dokument bleibt und wiederholen
kann, was entfernte Seiten sagten, etwa Anhänge und Metadaten</translation>
    </message>
    <message>
        <source>Run actions over documents</source>
        <translation>Aktionen über Dokumente ausführen</translation>
    </message>
    <message>
        <source>Remove from each document the pages that this list has for
it: a line a document, its path and its range with a tab (or
a comma) between, as vantora pages prints them; paths are
relative to the list. Inputs that it does not name stay as
they are; without INPUT, it names them. - is standard input</source>
        <translation>Aus jedem Dokument die Seiten entfernen, die diese Liste für
es hat: je Dokument eine Zeile, sein Pfad und sein Bereich,
mit einem Tabulator (oder einem Komma) dazwischen, wie vantora
pages sie ausgibt; Pfade gelten ab der Liste. Eingaben, die
sie nicht nennt, bleiben, wie sie sind; ohne INPUT nennt sie
sie. - ist die Standardeingabe</translation>
    </message>
    <message>
        <source>Write to this file; - is standard output</source>
        <translation>In diese Datei schreiben; - ist die Standardausgabe</translation>
    </message>
    <message>
        <source>Write into this folder, under the inputs&apos; names</source>
        <translation>In diesen Ordner schreiben, unter den Namen der Eingaben</translation>
    </message>
    <message>
        <source>With -d: under these names, of {name}, {ext} and
{number}, such as {name}-cut{ext}</source>
        <translation>Mit -d: unter diesen Namen, aus {name}, {ext} und {number},
etwa {name}-cut{ext}</translation>
    </message>
    <message>
        <source>Replace the inputs, each by a finished file</source>
        <translation>Die Eingaben ersetzen, jede durch eine fertige Datei</translation>
    </message>
    <message>
        <source>With --in-place: keep each original as NAME.pdf.bak</source>
        <translation>Mit --in-place: jedes Original als NAME.pdf.bak behalten</translation>
    </message>
    <message>
        <source>Replace outputs and a report that exist; never a backup</source>
        <translation>Ergebnisse und einen Bericht ersetzen, die es schon gibt; nie
eine Sicherung</translation>
    </message>
    <message>
        <source>Where an output exists: write NAME (1).pdf, or the first
such name that is free</source>
        <translation>Wo es ein Ergebnis schon gibt: NAME (1).pdf schreiben, oder
den ersten solchen Namen, der frei ist</translation>
    </message>
    <message>
        <source>Leave out inputs whose output is there and no older</source>
        <translation>Eingaben auslassen, deren Ergebnis da und nicht älter ist</translation>
    </message>
    <message>
        <source>Say what would become of each document and write nothing</source>
        <translation>Sagen, was aus jedem Dokument würde, und nichts schreiben</translation>
    </message>
    <message>
        <source>Examples:
  vantora run --pages 1 --in-place --backup --report cut.jsonl scans/*.pdf
  vantora undo --dry-run cut.jsonl
  vantora undo cut.jsonl

Names in a report are those that the run was given, so give the command in the
same folder. Only what is as the run left it is touched.</source>
        <translation>Beispiele:
  vantora run --pages 1 --in-place --backup --report cut.jsonl scans/*.pdf
  vantora undo --dry-run cut.jsonl
  vantora undo cut.jsonl

Namen in einem Bericht sind die, die der Lauf bekam; geben Sie den Befehl also im
selben Ordner. Nur was so ist, wie der Lauf es ließ, wird angerührt.</translation>
    </message>
    <message>
        <source>Give back the originals that a run replaced</source>
        <translation>Die Originale zurückgeben, die ein Lauf ersetzt hat</translation>
    </message>
    <message>
        <source>What the run wrote with --report</source>
        <translation>Was der Lauf mit --report geschrieben hat</translation>
    </message>
    <message>
        <source>Also remove outputs that are files beside their originals</source>
        <translation>Auch Ergebnisse entfernen, die Dateien neben ihren Originalen
sind</translation>
    </message>
    <message>
        <source>Only say what would be done</source>
        <translation>Nur sagen, was getan würde</translation>
    </message>
    <message>
        <source>Print errors only</source>
        <translation>Nur Fehler ausgeben</translation>
    </message>
    <message>
        <source>Examples:
  vantora verify report.pdf short.pdf --pages 2,4-6
  vantora verify scans cut --pages 1
  vantora verify scans cut --ranges ranges.tsv --json
  vantora verify --report cut.jsonl

Of folders, each document below BEFORE is held against the one of the same name
below AFTER. Names in a report are those that the run was given, so give the
command in the same folder. The exit status is 1 when anything is found.</source>
        <translation>Beispiele:
  vantora verify report.pdf short.pdf --pages 2,4-6
  vantora verify scans cut --pages 1
  vantora verify scans cut --ranges ranges.tsv --json
  vantora verify --report cut.jsonl

Bei Ordnern wird jedes Dokument unter BEFORE mit dem desselben Namens unter AFTER
verglichen. Namen in einem Bericht sind die, die der Lauf bekam; geben Sie den
Befehl also im selben Ordner. Der Rückgabewert ist 1, wenn etwas gefunden wird.</translation>
    </message>
    <message>
        <source>Check that removed pages are gone and the rest is as it was</source>
        <translation>Prüfen, dass entfernte Seiten weg sind und der Rest ist, wie
er war</translation>
    </message>
    <message>
        <source>The document with all pages, or a folder</source>
        <translation>Das Dokument mit allen Seiten, oder ein Ordner</translation>
    </message>
    <message>
        <source>What was made of it, or a folder</source>
        <translation>Was daraus wurde, oder ein Ordner</translation>
    </message>
    <message>
        <source>The pages that went</source>
        <translation>Die Seiten, die gingen</translation>
    </message>
    <message>
        <source>The pages that went of each document, as for run --ranges</source>
        <translation>Die Seiten, die aus jedem Dokument gingen, wie bei run
--ranges</translation>
    </message>
    <message>
        <source>The documents and pages of a run, from its report</source>
        <translation>Die Dokumente und Seiten eines Laufs, aus seinem Bericht</translation>
    </message>
    <message>
        <source>Documents are PDF files in the folders themselves; what lies in subfolders, hidden files and
links are left alone. Those that are there when it begins are done as well. Each is done once:
the report says which are done, also when the command is given again. One that is replaced
by another version is a new one. Documents stay where they are unless --done or --failed
says otherwise.

Examples:
  Remove the first page of what is put into a folder:
    vantora watch inbox -d cut --pages 1
  Move what is done and what fails out of the way:
    vantora watch inbox -d cut --pages 1 --done inbox/done --failed inbox/failed
  From a timer: do what is there, and end:
    vantora watch inbox -d cut --pages 1 --once

Exit status: 0 every document that arrived is done, 1 at least one failed for a reason that
--accept-failures does not name, 2 wrong usage, 3 done with losses that --salvage allowed,
130 asked to stop.</source>
        <translation>Dokumente sind PDF-Dateien in den Ordnern selbst; was in Unterordnern liegt, versteckte
Dateien und Links bleiben unberührt. Was beim Beginn da ist, wird ebenfalls bearbeitet. Jedes
wird einmal bearbeitet: der Bericht sagt, welche es sind, auch wenn der Befehl noch einmal
gegeben wird. Eines, das durch eine andere Fassung ersetzt wird, ist ein neues. Dokumente
bleiben, wo sie sind, wenn --done oder --failed nichts anderes sagt.

Beispiele:
  Die erste Seite von allem entfernen, was in einen Ordner gelegt wird:
    vantora watch inbox -d cut --pages 1
  Was bearbeitet ist und was scheitert, aus dem Weg räumen:
    vantora watch inbox -d cut --pages 1 --done inbox/done --failed inbox/failed
  Von einem Zeitgeber aus: bearbeiten, was da ist, und enden:
    vantora watch inbox -d cut --pages 1 --once

Rückgabewert: 0 jedes Dokument, das ankam, ist bearbeitet, 1 mindestens eines scheiterte aus
einem Grund, den --accept-failures nicht nennt, 2 falscher Aufruf, 3 bearbeitet mit Verlusten,
die --salvage erlaubte, 130 sollte aufhören.</translation>
    </message>
    <message>
        <source>Write into this folder, under the documents&apos; names</source>
        <translation>In diesen Ordner schreiben, unter den Namen der Dokumente</translation>
    </message>
    <message>
        <source>Under these names, of {name} and {ext}, such as
{name}-cut{ext}</source>
        <translation>Unter diesen Namen, aus {name} und {ext}, etwa {name}-cut{ext}</translation>
    </message>
    <message>
        <source>Replace outputs that exist</source>
        <translation>Ergebnisse ersetzen, die es schon gibt</translation>
    </message>
    <message>
        <source>Move documents that are done into this folder, of the
same file system</source>
        <translation>Dokumente, die bearbeitet sind, in diesen Ordner verschieben,
auf demselben Dateisystem</translation>
    </message>
    <message>
        <source>Move documents that fail into this one; without it they stay,
and are tried again when they are changed</source>
        <translation>Dokumente, die scheitern, in diesen verschieben; ohne das
bleiben sie und werden noch einmal versucht, wenn sie geändert
sind</translation>
    </message>
    <message>
        <source>Keep what has become of each document in this file, a line
of JSON each, and leave alone what it says is done
(DIR/.vantora-watch.jsonl)</source>
        <translation>Was aus jedem Dokument geworden ist, in dieser Datei
festhalten, je eine Zeile JSON, und lassen, was nach ihr
bearbeitet ist (DIR/.vantora-watch.jsonl)</translation>
    </message>
    <message>
        <source>With the SHA-256 of each document in it, which is compared
when it begins</source>
        <translation>Mit der SHA-256 jedes Dokuments darin, die beim Beginn
verglichen wird</translation>
    </message>
    <message>
        <source>Take a document once it has stayed the same for so long (2);
0 takes it as soon as it is closed or moved there</source>
        <translation>Ein Dokument nehmen, wenn es so lange gleich geblieben ist
(2); 0 nimmt es, sobald es geschlossen oder dorthin verschoben
ist</translation>
    </message>
    <message>
        <source>List the folders so often, instead of only those of
which the system does not tell (5)</source>
        <translation>Die Ordner so oft auflisten, statt nur die, von denen das
System nichts meldet (5)</translation>
    </message>
    <message>
        <source>Do what is there, and end; what grows is left to the next time</source>
        <translation>Bearbeiten, was da ist, und enden; was noch wächst, bleibt für
das nächste Mal</translation>
    </message>
    <message>
        <source>Run actions over documents as they arrive in folders</source>
        <translation>Aktionen über Dokumente ausführen, die in Ordnern ankommen</translation>
    </message>
    <message>
        <source>A folder that documents come to</source>
        <translation>Ein Ordner, in den Dokumente kommen</translation>
    </message>
    <message>
        <source>An input that is a folder stands for the PDF files in
it and its subfolders, which -d makes in DIR, too</source>
        <translation>Eine Eingabe, die ein Ordner ist, steht für die PDF-Dateien in
ihm und seinen Unterordnern, die -d auch in DIR anlegt</translation>
    </message>
    <message>
        <source>The action list</source>
        <translation>Die Aktionsliste</translation>
    </message>
    <message>
        <source>The favourite</source>
        <translation>Der Favorit</translation>
    </message>
    <message>
        <source>The tool-settings file</source>
        <translation>Die Datei mit Werkzeugeinstellungen</translation>
    </message>
    <message>
        <source>Print one JSON object per action list</source>
        <translation>Je Aktionsliste ein JSON-Objekt ausgeben</translation>
    </message>
    <message>
        <source>Print one JSON object per favourite</source>
        <translation>Je Favorit ein JSON-Objekt ausgeben</translation>
    </message>
    <message>
        <source>Switch off --recursive of your configuration</source>
        <translation>--recursive Ihrer Konfiguration ausschalten</translation>
    </message>
    <message>
        <source>Switch off --backup of your configuration</source>
        <translation>--backup Ihrer Konfiguration ausschalten</translation>
    </message>
    <message>
        <source>Switch off --rename of your configuration</source>
        <translation>--rename Ihrer Konfiguration ausschalten</translation>
    </message>
    <message>
        <source>Switch off --skip-existing of your configuration</source>
        <translation>--skip-existing Ihrer Konfiguration ausschalten</translation>
    </message>
    <message>
        <source>Switch off --keep-signed of your configuration</source>
        <translation>--keep-signed Ihrer Konfiguration ausschalten</translation>
    </message>
    <message>
        <source>Switch off --strict of your configuration</source>
        <translation>--strict Ihrer Konfiguration ausschalten</translation>
    </message>
    <message>
        <source>Switch off --verify of your configuration</source>
        <translation>--verify Ihrer Konfiguration ausschalten</translation>
    </message>
    <message>
        <source>Switch off --report-hashes of your configuration</source>
        <translation>--report-hashes Ihrer Konfiguration ausschalten</translation>
    </message>
    <message>
        <source>Switch off --json of your configuration</source>
        <translation>--json Ihrer Konfiguration ausschalten</translation>
    </message>
    <message>
        <source>Switch off --quiet of your configuration</source>
        <translation>--quiet Ihrer Konfiguration ausschalten</translation>
    </message>
    <message>
        <source>Switch off --verbose of your configuration</source>
        <translation>--verbose Ihrer Konfiguration ausschalten</translation>
    </message>
    <message>
        <source>Print this help message and exit</source>
        <translation>Diese Hilfe ausgeben und enden</translation>
    </message>
    <message>
        <source>Display program version information and exit</source>
        <translation>Die Version des Programms ausgeben und enden</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>Choices:
  range:1,4-6, first[:N], last[:N], odd, even, every:3[+1], label:iv-x,
  bookmark:TITLE, size:A4, portrait, landscape, text:WORDS or text:/REGEX/,
  no-text, blank[:strict], colour, grey,
  duplicate; the manual page explains them

Examples:
  vantora pages --choose last:2 report.pdf
  vantora pages --choose &quot;text:intentionally left blank&quot; -r scans --sheet look.html
  vantora pages --choose &quot;bookmark:Appendix&quot; *.pdf &gt;ranges.tsv
  vantora run --ranges ranges.tsv -d cut</source>
        <translation>Auswahl:
  range:1,4-6, first[:N], last[:N], odd, even, every:3[+1], label:iv-x,
  bookmark:TITLE, size:A4, portrait, landscape, text:WORDS or text:/REGEX/,
  no-text, blank[:strict], colour, grey,
  duplicate; die Handbuchseite erklärt sie

Beispiele:
  vantora pages --choose last:2 report.pdf
  vantora pages --choose &quot;text:intentionally left blank&quot; -r scans --sheet look.html
  vantora pages --choose &quot;bookmark:Appendix&quot; *.pdf &gt;ranges.tsv
  vantora run --ranges ranges.tsv -d cut</translation>
    </message>
    <message>
        <source>see vantora %1</source>
        <translation>siehe vantora %1</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>Aufruf</translation>
    </message>
    <message>
        <source>OPTIONS</source>
        <translation>OPTIONEN</translation>
    </message>
    <message>
        <source>Positionals</source>
        <translation>Argumente</translation>
    </message>
    <message>
        <source>COMMAND</source>
        <translation>BEFEHL</translation>
    </message>
    <message>
        <source>
# What stands below such a line holds for vantora run --profile scans. All of the above
# may stand here, too.
#[profile.scans]
</source>
        <translation>
# Was unter einer solchen Zeile steht, gilt für vantora run --profile scans. Alles von oben
# darf auch hier stehen.
#[profile.scans]
</translation>
    </message>
    <message>
        <source>default</source>
        <translation>Vorgabe</translation>
    </message>
    <message>
        <source>profile %1, line %2</source>
        <translation>Profil %1, Zeile %2</translation>
    </message>
    <message>
        <source>line %1</source>
        <translation>Zeile %1</translation>
    </message>
    <message>
        <source>file: %1</source>
        <translation>Datei: %1</translation>
    </message>
    <message>
        <source>file: %1 (not there)</source>
        <translation>Datei: %1 (nicht da)</translation>
    </message>
    <message>
        <source>profiles: %1</source>
        <translation>Profile: %1</translation>
    </message>
    <message>
        <source>interrupted</source>
        <translation>unterbrochen</translation>
    </message>
    <message>
        <source>the options were not accepted</source>
        <translation>die Optionen wurden nicht angenommen</translation>
    </message>
    <message>
        <source>standard input</source>
        <translation>Standardeingabe</translation>
    </message>
    <message>
        <source>error:</source>
        <translation>Fehler:</translation>
    </message>
    <message>
        <source>warning:</source>
        <translation>Warnung:</translation>
    </message>
    <message>
        <source> (%1 landscape)</source>
        <translation> (%1 quer)</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>none</source>
        <translation>nicht vorhanden</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>not signed</source>
        <translation>nicht signiert</translation>
    </message>
    <message>
        <source>signed, not checked</source>
        <translation>signiert, nicht geprüft</translation>
    </message>
    <message>
        <source>names no signer</source>
        <translation>nennt keinen Unterzeichner</translation>
    </message>
    <message>
        <source>by %1</source>
        <translation>von %1</translation>
    </message>
    <message>
        <source>what it covers can&apos;t be told</source>
        <translation>was sie abdeckt, ist nicht zu sagen</translation>
    </message>
    <message>
        <source>covers the whole file</source>
        <translation>deckt die ganze Datei ab</translation>
    </message>
    <message>
        <source>does not cover the whole file</source>
        <translation>deckt nicht die ganze Datei ab</translation>
    </message>
    <message>
        <source>page size</source>
        <translation>Seitengröße</translation>
    </message>
    <message>
        <source>and %1 more, which --json lists</source>
        <translation>und %1 mehr, die --json auflistet</translation>
    </message>
    <message>
        <source>title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>file size</source>
        <translation>Dateigröße</translation>
    </message>
    <message>
        <source>PDF version</source>
        <translation>PDF-Version</translation>
    </message>
    <message>
        <source>encryption</source>
        <translation>Verschlüsselung</translation>
    </message>
    <message>
        <source>not permitted</source>
        <translation>nicht erlaubt</translation>
    </message>
    <message>
        <source>outline</source>
        <translation>Lesezeichen</translation>
    </message>
    <message>
        <source>form</source>
        <translation>Formular</translation>
    </message>
    <message>
        <source>signatures</source>
        <translation>Signaturen</translation>
    </message>
    <message>
        <source>attachments</source>
        <translation>Anhänge</translation>
    </message>
    <message>
        <source>layers</source>
        <translation>Ebenen</translation>
    </message>
    <message>
        <source>tagged</source>
        <translation>Strukturangaben</translation>
    </message>
    <message>
        <source>linearised</source>
        <translation>linearisiert</translation>
    </message>
    <message numerus="yes">
        <source>%n pages</source>
        <translation>
            <numerusform>%n Seite</numerusform>
            <numerusform>%n Seiten</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n sizes</source>
        <translation>
            <numerusform>%n Größe</numerusform>
            <numerusform>%n Größen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n entries</source>
        <translation>
            <numerusform>%n Eintrag</numerusform>
            <numerusform>%n Einträge</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n fields</source>
        <translation>
            <numerusform>%n Feld</numerusform>
            <numerusform>%n Felder</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n files</source>
        <translation>
            <numerusform>%n Datei</numerusform>
            <numerusform>%n Dateien</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n layers</source>
        <translation>
            <numerusform>%n Ebene</numerusform>
            <numerusform>%n Ebenen</numerusform>
        </translation>
    </message>
    <message>
        <source>removed %1</source>
        <translation>entfernt: %1</translation>
    </message>
    <message>
        <source>no action list is saved</source>
        <translation>es ist keine Aktionsliste gespeichert</translation>
    </message>
    <message>
        <source>no favourite is saved</source>
        <translation>es ist kein Favorit gespeichert</translation>
    </message>
    <message numerus="yes">
        <source>%n steps</source>
        <translation>
            <numerusform>%n Schritt</numerusform>
            <numerusform>%n Schritte</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 in %2, of %3 looked at</source>
        <translation>%1; %2 mit solchen Seiten, von %3 angesehenen</translation>
    </message>
    <message>
        <source>%1 failed</source>
        <translation>%1 gescheitert</translation>
    </message>
    <message numerus="yes">
        <source>%n documents</source>
        <translation>
            <numerusform>%n Dokument</numerusform>
            <numerusform>%n Dokumente</numerusform>
        </translation>
    </message>
    <message>
        <source>one worker process does all documents in their order, because action &quot;%1&quot; may have to see them so</source>
        <translation>ein Arbeitsprozess bearbeitet alle Dokumente in ihrer Reihenfolge, weil die Aktion „%1“ sie vielleicht so sehen muss</translation>
    </message>
    <message>
        <source>%1 of %2 documents</source>
        <translation>%1 von %2 Dokumenten</translation>
    </message>
    <message>
        <source>%1 a second, %2 left</source>
        <translation>%1 in der Sekunde, noch %2</translation>
    </message>
    <message>
        <source>%1 by other steps</source>
        <translation>%1 durch andere Schritte</translation>
    </message>
    <message>
        <source>%1 by another version</source>
        <translation>%1 durch eine andere Version</translation>
    </message>
    <message>
        <source>%1 of %2 files are outputs of such a run, and so no inputs</source>
        <translation>%1 von %2 Dateien sind Ergebnisse eines solchen Laufs und daher keine Eingaben</translation>
    </message>
    <message>
        <source>%1 of %2 documents are in share %3 of %4</source>
        <translation>%1 von %2 Dokumenten sind in Anteil %3 von %4</translation>
    </message>
    <message>
        <source>%1 of %2 documents are done by the report, and left as they are</source>
        <translation>%1 von %2 Dokumenten sind nach dem Bericht bearbeitet und bleiben, wie sie sind</translation>
    </message>
    <message numerus="yes">
        <source>%n other outputs</source>
        <translation>
            <numerusform>%n anderes Ergebnis</numerusform>
            <numerusform>%n andere Ergebnisse</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n outputs gone</source>
        <translation>
            <numerusform>%n Ergebnis fehlt</numerusform>
            <numerusform>%n Ergebnisse fehlen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n outputs changed</source>
        <translation>
            <numerusform>%n Ergebnis geändert</numerusform>
            <numerusform>%n Ergebnisse geändert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n inputs changed</source>
        <translation>
            <numerusform>%n Eingabe geändert</numerusform>
            <numerusform>%n Eingaben geändert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n documents have changed since the report, and are to be done again</source>
        <translation>
            <numerusform>%n Dokument hat sich seit dem Bericht geändert und ist noch einmal zu bearbeiten</numerusform>
            <numerusform>%n Dokumente haben sich seit dem Bericht geändert und sind noch einmal zu bearbeiten</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n documents have outputs no older than themselves, and are left as they are</source>
        <translation>
            <numerusform>%n Dokument hat ein Ergebnis, das nicht älter ist, und bleibt, wie es ist</numerusform>
            <numerusform>%n Dokumente haben Ergebnisse, die nicht älter sind, und bleiben, wie sie sind</numerusform>
        </translation>
    </message>
    <message>
        <source>none of %1 would go, %2 left</source>
        <translation>keine von %1 zu entfernen, %2 übrig</translation>
    </message>
    <message>
        <source>none of %1 removed, %2 left</source>
        <translation>keine von %1 entfernt, %2 übrig</translation>
    </message>
    <message>
        <source>%1 of %2 would go (%3), %4 left</source>
        <translation>%1 von %2 zu entfernen (%3), %4 übrig</translation>
    </message>
    <message>
        <source>%1 of %2 removed (%3), %4 left</source>
        <translation>%1 von %2 entfernt (%3), %4 übrig</translation>
    </message>
    <message>
        <source>%1; what would become of them, only the action itself knows</source>
        <translation>%1; was aus ihnen würde, weiß nur die Aktion selbst</translation>
    </message>
    <message>
        <source>%1 before, %2 after</source>
        <translation>vorher %1, nachher %2</translation>
    </message>
    <message>
        <source>standard output</source>
        <translation>Standardausgabe</translation>
    </message>
    <message>
        <source>exists, would be replaced</source>
        <translation>gibt es schon, würde ersetzt</translation>
    </message>
    <message>
        <source>left out; %1</source>
        <translation>ausgelassen; %1</translation>
    </message>
    <message>
        <source>verified</source>
        <translation>geprüft</translation>
    </message>
    <message>
        <source>to go on, give the same command again</source>
        <translation>geben Sie, um fortzufahren, denselben Befehl noch einmal</translation>
    </message>
    <message>
        <source>to go on, give the same command with --resume %1</source>
        <translation>geben Sie, um fortzufahren, denselben Befehl mit --resume %1</translation>
    </message>
    <message>
        <source>a run with --report FILE can be gone on with</source>
        <translation>ein Lauf mit --report FILE lässt sich fortsetzen</translation>
    </message>
    <message>
        <source>%1 not named in the list of ranges, and left as they are</source>
        <translation>%1 nicht in der Liste der Bereiche genannt und unverändert</translation>
    </message>
    <message>
        <source>interrupted: %1; nothing is half-written; %2</source>
        <translation>unterbrochen: %1; nichts ist halb geschrieben; %2</translation>
    </message>
    <message>
        <source>left, for you to judge: %1</source>
        <translation>bleibt und ist von Ihnen zu beurteilen: %1</translation>
    </message>
    <message>
        <source>would be given back</source>
        <translation>würde zurückgegeben</translation>
    </message>
    <message>
        <source>given back</source>
        <translation>zurückgegeben</translation>
    </message>
    <message>
        <source>would be removed</source>
        <translation>würde entfernt</translation>
    </message>
    <message>
        <source>removed</source>
        <translation>entfernt</translation>
    </message>
    <message>
        <source>is undone already</source>
        <translation>ist schon rückgängig gemacht</translation>
    </message>
    <message>
        <source>left alone</source>
        <translation>unverändert gelassen</translation>
    </message>
    <message>
        <source>undone already</source>
        <translation>schon rückgängig gemacht</translation>
    </message>
    <message>
        <source>the report has nothing to undo</source>
        <translation>der Bericht enthält nichts, was rückgängig zu machen wäre</translation>
    </message>
    <message>
        <source>interrupted; to go on, give the same command again</source>
        <translation>unterbrochen; geben Sie, um fortzufahren, denselben Befehl noch einmal</translation>
    </message>
    <message>
        <source>%1 verified</source>
        <translation>%1 geprüft</translation>
    </message>
    <message>
        <source>%1 with findings</source>
        <translation>%1 mit Funden</translation>
    </message>
    <message>
        <source>%1, %2 removed, %3 left</source>
        <translation>%1, davon %2 entfernt, %3 übrig</translation>
    </message>
    <message>
        <source>looked for</source>
        <translation>gesucht</translation>
    </message>
    <message>
        <source>not told</source>
        <translation>offen</translation>
    </message>
    <message>
        <source>verdict</source>
        <translation>Urteil</translation>
    </message>
    <message>
        <source>not verified: %1</source>
        <translation>nicht bestätigt: %1</translation>
    </message>
    <message>
        <source>page %1</source>
        <translation>Seite %1</translation>
    </message>
    <message>
        <source>finding</source>
        <translation>Fund</translation>
    </message>
    <message numerus="yes">
        <source>%n things of removed pages</source>
        <translation>
            <numerusform>%n Spur entfernter Seiten</numerusform>
            <numerusform>%n Spuren entfernter Seiten</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n findings</source>
        <translation>
            <numerusform>%n Fund</numerusform>
            <numerusform>%n Funde</numerusform>
        </translation>
    </message>
    <message>
        <source>watching %1</source>
        <translation>beobachtet wird %1</translation>
    </message>
    <message>
        <source>watching %1, by listing it now and then</source>
        <translation>beobachtet wird %1, durch Auflisten hin und wieder</translation>
    </message>
    <message>
        <source>the report knows %1 of the documents there</source>
        <translation>der Bericht kennt %1 der Dokumente dort</translation>
    </message>
    <message>
        <source>%1 is moved to %2</source>
        <translation>%1 ist nach %2 verschoben</translation>
    </message>
    <message>
        <source>stopped: %1 done, %2 failed; nothing is half-written; to go on, give the same command again</source>
        <translation>beendet: %1 bearbeitet, %2 gescheitert; nichts ist halb geschrieben; geben Sie, um fortzufahren, denselben Befehl noch einmal</translation>
    </message>
    <message numerus="yes">
        <source>%n documents wait for that to pass, and are tried again</source>
        <translation>
            <numerusform>%n Dokument wartet, bis das vorbei ist, und wird noch einmal versucht</numerusform>
            <numerusform>%n Dokumente warten, bis das vorbei ist, und werden noch einmal versucht</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n bytes</source>
        <translation>
            <numerusform>%n Byte</numerusform>
            <numerusform>%n Byte</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of %2 documents done</source>
        <translation>%1 von %2 Dokumenten bearbeitet</translation>
    </message>
    <message>
        <source>%1 in part</source>
        <translation>%1 zum Teil</translation>
    </message>
    <message>
        <source>%1 left with a blank page only</source>
        <translation>%1 mit nur einer leeren Seite übrig</translation>
    </message>
    <message>
        <source>%1 left out</source>
        <translation>%1 ausgelassen</translation>
    </message>
    <message>
        <source>%1 with warnings</source>
        <translation>%1 mit Warnungen</translation>
    </message>
    <message>
        <source>%1 with losses</source>
        <translation>%1 mit Verlusten</translation>
    </message>
    <message>
        <source>, which was to be accepted</source>
        <translation>, was hinzunehmen war</translation>
    </message>
    <message>
        <source>%1 removed</source>
        <translation>%1 entfernt</translation>
    </message>
    <message>
        <source>%1 documents a second</source>
        <translation>%1 Dokumente in der Sekunde</translation>
    </message>
    <message>
        <source># Defaults for vantora run and vantora watch, in TOML. Remove the # before what shall hold.
# The command line goes before a profile, and a profile before what stands outside of it:
# --directory DIR takes the place of directory, and --no-verify switches verify off.
# vantora config shows what holds.
</source>
        <translation># Vorgaben für vantora run und vantora watch, in TOML. Entfernen Sie das # vor dem, was gelten
# soll. Die Befehlszeile geht vor einem Profil, und ein Profil vor dem, was außerhalb steht:
# --directory DIR tritt an die Stelle von directory, und --no-verify schaltet verify aus.
# vantora config zeigt, was gilt.
</translation>
    </message>
</context>
</TS>
