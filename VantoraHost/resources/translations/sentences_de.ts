<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Sentences</name>
    <message>
        <source>check the name</source>
        <translation>prüfen Sie den Namen</translation>
    </message>
    <message>
        <source>name a PDF file, a folder with --recursive, or - for standard input</source>
        <translation>nennen Sie eine PDF-Datei, einen Ordner mit --recursive oder - für die Standardeingabe</translation>
    </message>
    <message>
        <source>name a PDF file, or get an undamaged copy of it</source>
        <translation>nennen Sie eine PDF-Datei, oder besorgen Sie eine unbeschädigte Kopie</translation>
    </message>
    <message>
        <source>get an undamaged copy of it, or keep what can be kept with --salvage</source>
        <translation>besorgen Sie eine unbeschädigte Kopie, oder behalten Sie mit --salvage, was zu behalten ist</translation>
    </message>
    <message>
        <source>--if-empty blank leaves a blank page, --if-empty skip leaves the document out</source>
        <translation>--if-empty blank lässt eine leere Seite, --if-empty skip lässt das Dokument aus</translation>
    </message>
    <message>
        <source>leave out --strict to take out what is there</source>
        <translation>lassen Sie --strict weg, um zu entfernen, was da ist</translation>
    </message>
    <message>
        <source>put it into a file, one a line, for --password-file FILE</source>
        <translation>schreiben Sie es in eine Datei, je Zeile eines, für --password-file FILE</translation>
    </message>
    <message>
        <source>check the password file</source>
        <translation>prüfen Sie die Passwortdatei</translation>
    </message>
    <message>
        <source>the owner&apos;s password in --password-file FILE lifts that</source>
        <translation>das Passwort des Eigentümers in --password-file FILE hebt das auf</translation>
    </message>
    <message>
        <source>leave out --keep-signed to go on without the signature</source>
        <translation>lassen Sie --keep-signed weg, um ohne die Signatur weiterzumachen</translation>
    </message>
    <message>
        <source>use --overwrite to replace it, --rename to keep both, or name another</source>
        <translation>--overwrite ersetzt es, --rename behält beide; oder nennen Sie ein anderes</translation>
    </message>
    <message>
        <source>use --in-place to replace an input, or name another output</source>
        <translation>--in-place ersetzt eine Eingabe; oder nennen Sie ein anderes Ergebnis</translation>
    </message>
    <message>
        <source>neither is written; leave one out, or let -d with --rename name them differently</source>
        <translation>keines wird geschrieben; lassen Sie eines weg, oder benennen Sie sie mit -d und --rename verschieden</translation>
    </message>
    <message>
        <source>create it first (mkdir -p), or name another</source>
        <translation>legen Sie ihn erst an (mkdir -p), oder nennen Sie einen anderen</translation>
    </message>
    <message>
        <source>put a folder in its place, or name the one that it leads to with -d</source>
        <translation>setzen Sie einen Ordner an seine Stelle, oder nennen Sie mit -d den, zu dem er führt</translation>
    </message>
    <message>
        <source>name a file with -o, a folder with -d, or - for standard output</source>
        <translation>nennen Sie eine Datei mit -o, einen Ordner mit -d oder - für die Standardausgabe</translation>
    </message>
    <message>
        <source>--remove-outputs removes it</source>
        <translation>--remove-outputs entfernt es</translation>
    </message>
    <message>
        <source>without --verify it is written, and vantora verify lists all that is found</source>
        <translation>ohne --verify wird es geschrieben, und vantora verify listet alles auf, was gefunden wird</translation>
    </message>
    <message>
        <source>vantora actions lists them</source>
        <translation>vantora actions listet sie auf</translation>
    </message>
    <message>
        <source>vantora lists shows what there is</source>
        <translation>vantora lists zeigt, was es gibt</translation>
    </message>
    <message>
        <source>vantora favourites shows what there is</source>
        <translation>vantora favourites zeigt, was es gibt</translation>
    </message>
    <message>
        <source>save it anew from the action&apos;s options dialog (vantora configure)</source>
        <translation>speichern Sie es neu aus dem Optionsdialog der Aktion (vantora configure)</translation>
    </message>
    <message>
        <source>vantora run --help shows examples</source>
        <translation>vantora run --help zeigt Beispiele</translation>
    </message>
    <message>
        <source>correct the list</source>
        <translation>berichtigen Sie die Liste</translation>
    </message>
    <message>
        <source>vantora configure shows an action&apos;s options</source>
        <translation>vantora configure zeigt die Optionen einer Aktion</translation>
    </message>
    <message>
        <source>allow more (--memory-limit), use fewer workers (-j), or divide the document first</source>
        <translation>erlauben Sie mehr (--memory-limit), nehmen Sie weniger Arbeitsprozesse (-j), oder teilen Sie das Dokument vorher</translation>
    </message>
    <message>
        <source>allow more with --timeout, or look what is wrong with it</source>
        <translation>erlauben Sie mehr mit --timeout, oder sehen Sie nach, was damit nicht stimmt</translation>
    </message>
    <message>
        <source>the document may be damaged; vantora info shows what can be read of it</source>
        <translation>das Dokument ist vielleicht beschädigt; vantora info zeigt, was davon zu lesen ist</translation>
    </message>
    <message>
        <source>something else ended them, such as the system when memory is short; run it again, with fewer workers (-j)</source>
        <translation>etwas anderes hat sie beendet, etwa das System, wenn der Speicher knapp ist; führen Sie es noch einmal aus, mit weniger Arbeitsprozessen (-j)</translation>
    </message>
    <message>
        <source>-j 0 does without worker processes</source>
        <translation>-j 0 kommt ohne Arbeitsprozesse aus</translation>
    </message>
    <message>
        <source>go on with it (--resume and --report with its name), replace it (--overwrite), or name another</source>
        <translation>setzen Sie ihn fort (--resume und --report mit seinem Namen), ersetzen Sie ihn (--overwrite), oder nennen Sie einen anderen</translation>
    </message>
    <message>
        <source>name what an earlier run wrote with --report</source>
        <translation>nennen Sie, was ein früherer Lauf mit --report geschrieben hat</translation>
    </message>
    <message>
        <source>name another report; --skip-existing tells by the outputs what is done</source>
        <translation>nennen Sie einen anderen Bericht; --skip-existing erkennt an den Ergebnissen, was erledigt ist</translation>
    </message>
    <message>
        <source>give the same steps, or leave out --resume to change them once more</source>
        <translation>geben Sie dieselben Schritte an, oder lassen Sie --resume weg, um sie noch einmal zu ändern</translation>
    </message>
    <message>
        <source>name another file for it</source>
        <translation>nennen Sie eine andere Datei dafür</translation>
    </message>
    <message>
        <source>use --overwrite to replace it, or name another</source>
        <translation>--overwrite ersetzt es; oder nennen Sie ein anderes</translation>
    </message>
    <message>
        <source>say which one with --step N</source>
        <translation>sagen Sie mit --step N, welcher es ist</translation>
    </message>
    <message>
        <source>left out: %1</source>
        <translation>ausgelassen: %1</translation>
    </message>
    <message>
        <source>the folder holds no PDF file (a name that ends in .pdf)</source>
        <translation>der Ordner enthält keine PDF-Datei (ein Name, der auf .pdf endet)</translation>
    </message>
    <message>
        <source>the program with the window isn&apos;t there, which the package vantora-desktop has</source>
        <translation>das Programm mit dem Fenster ist nicht da; das Paket vantora-desktop enthält es</translation>
    </message>
    <message>
        <source>the program with the window can&apos;t be started: %1</source>
        <translation>das Programm mit dem Fenster kann nicht gestartet werden: %1</translation>
    </message>
    <message>
        <source>no display can be reached</source>
        <translation>kein Bildschirm ist erreichbar</translation>
    </message>
    <message>
        <source>the list of inputs can&apos;t be read: %1</source>
        <translation>die Liste der Eingaben kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>the password file can&apos;t be read: %1</source>
        <translation>die Passwortdatei kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>the file with the range can&apos;t be read: %1</source>
        <translation>die Datei mit dem Bereich kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>the list of inputs names no file</source>
        <translation>die Liste der Eingaben nennt keine Datei</translation>
    </message>
    <message>
        <source>the list of ranges names no document</source>
        <translation>die Liste der Bereiche nennt kein Dokument</translation>
    </message>
    <message>
        <source>only action lists hold several steps</source>
        <translation>nur Aktionslisten enthalten mehrere Schritte</translation>
    </message>
    <message>
        <source>the list has %1 steps</source>
        <translation>die Liste hat %1 Schritte</translation>
    </message>
    <message>
        <source>there is no step %1, only 1 step</source>
        <translation>es gibt keinen Schritt %1, nur 1 Schritt</translation>
    </message>
    <message>
        <source>there is no step %1, only %2 steps</source>
        <translation>es gibt keinen Schritt %1, nur %2 Schritte</translation>
    </message>
    <message>
        <source>--verify judges removals of pages, and what action &quot;%1&quot; does only itself knows</source>
        <translation>--verify beurteilt das Entfernen von Seiten, und was die Aktion „%1“ tut, weiß nur sie selbst</translation>
    </message>
    <message>
        <source>action &quot;%1&quot; may not know what was set: %2; a misspelt option does nothing</source>
        <translation>die Aktion „%1“ kennt vielleicht nicht, was gesetzt wurde: %2; eine falsch geschriebene Option bewirkt nichts</translation>
    </message>
    <message>
        <source>--certificate names the certificate of one document; for %1 use a name such as {name}-certificate.pdf</source>
        <translation>--certificate nennt die Bescheinigung eines Dokuments; für %1 nehmen Sie einen Namen wie {name}-certificate.pdf</translation>
    </message>
    <message>
        <source>its certificate would be written to %1, where an output or a backup goes</source>
        <translation>seine Bescheinigung würde nach %1 geschrieben, wohin ein Ergebnis oder eine Sicherung kommt</translation>
    </message>
    <message>
        <source>has no certificate, but is done: %1</source>
        <translation>hat keine Bescheinigung, ist aber bearbeitet: %1</translation>
    </message>
    <message>
        <source>drawing it took too long</source>
        <translation>das Zeichnen dauerte zu lange</translation>
    </message>
    <message>
        <source>the process that draws it ended: %1</source>
        <translation>der Prozess, der sie zeichnet, endete: %1</translation>
    </message>
    <message>
        <source>is changed already, in place and by other steps than these</source>
        <translation>ist schon geändert, an Ort und Stelle und durch andere Schritte als diese</translation>
    </message>
    <message>
        <source>a PDF is not for a terminal</source>
        <translation>ein PDF ist nichts für ein Terminal</translation>
    </message>
    <message>
        <source>is not a file</source>
        <translation>ist keine Datei</translation>
    </message>
    <message>
        <source>doesn&apos;t lie in the folder %1</source>
        <translation>liegt nicht im Ordner %1</translation>
    </message>
    <message>
        <source>came from a pipe or went into one</source>
        <translation>kam aus einer Pipe oder ging in eine</translation>
    </message>
    <message>
        <source>the report doesn&apos;t say which pages went</source>
        <translation>der Bericht sagt nicht, welche Seiten gingen</translation>
    </message>
    <message>
        <source>was replaced, and there is no backup of it to verify with</source>
        <translation>wurde ersetzt, und es gibt keine Sicherung, mit der zu prüfen wäre</translation>
    </message>
    <message>
        <source>has changed since the run that the report is of</source>
        <translation>hat sich seit dem Lauf geändert, von dem der Bericht ist</translation>
    </message>
    <message>
        <source>is named twice</source>
        <translation>ist zweimal genannt</translation>
    </message>
    <message>
        <source>the folder for outputs lies in the watched folder %1; name one outside of it</source>
        <translation>der Ordner für Ergebnisse liegt im beobachteten Ordner %1; nennen Sie einen außerhalb</translation>
    </message>
    <message>
        <source>is watched itself; name another folder, such as %1/failed</source>
        <translation>wird selbst beobachtet; nennen Sie einen anderen Ordner, etwa %1/failed</translation>
    </message>
    <message>
        <source>is not on the file system of %1; name a folder there, such as %2/failed</source>
        <translation>ist nicht auf dem Dateisystem von %1; nennen Sie einen Ordner dort, etwa %2/failed</translation>
    </message>
    <message>
        <source>there is no such file, and so no profile &quot;%1&quot;; vantora config --example prints one to begin with</source>
        <translation>die Datei gibt es nicht, und daher auch kein Profil „%1“; vantora config --example gibt eine für den Anfang aus</translation>
    </message>
    <message>
        <source>it has no profile &quot;%1&quot;; vantora config lists those that it has</source>
        <translation>sie hat kein Profil „%1“; vantora config listet auf, welche sie hat</translation>
    </message>
    <message>
        <source>it has no profile &quot;%1&quot;; did you mean %2?</source>
        <translation>sie hat kein Profil „%1“; meinten Sie %2?</translation>
    </message>
    <message>
        <source>%1 takes true or false, such as %2</source>
        <translation>%1 nimmt true oder false, etwa %2</translation>
    </message>
    <message>
        <source>%1 takes a number that is no less than 0, or a text in quotes, such as %2</source>
        <translation>%1 nimmt eine Zahl ab 0 oder einen Text in Anführungszeichen, etwa %2</translation>
    </message>
    <message>
        <source>%1 takes a text in quotes, or a list of them in brackets, such as %2</source>
        <translation>%1 nimmt einen Text in Anführungszeichen oder eine Liste davon in eckigen Klammern, etwa %2</translation>
    </message>
    <message>
        <source>%1 takes a text in quotes, such as %2</source>
        <translation>%1 nimmt einen Text in Anführungszeichen, etwa %2</translation>
    </message>
    <message>
        <source>%1 is empty or holds a control character; leave it out, or write it anew</source>
        <translation>%1 ist leer oder enthält ein Steuerzeichen; lassen Sie es weg, oder schreiben Sie es neu</translation>
    </message>
    <message>
        <source>%1 of 0 lifts a protection, which only the command line does; write another number, or leave it out</source>
        <translation>%1 gleich 0 hebt einen Schutz auf, was nur die Befehlszeile tut; schreiben Sie eine andere Zahl, oder lassen Sie es weg</translation>
    </message>
    <message>
        <source>%1 is for the command line only, since %2; leave it out here</source>
        <translation>%1 ist nur für die Befehlszeile, denn %2; lassen Sie es hier weg</translation>
    </message>
    <message>
        <source>what a run works on is said each time</source>
        <translation>woran ein Lauf arbeitet, wird jedes Mal gesagt</translation>
    </message>
    <message>
        <source>what replaces files or loses content is said each time</source>
        <translation>was Dateien ersetzt oder Inhalt verliert, wird jedes Mal gesagt</translation>
    </message>
    <message>
        <source>it names the output of one document</source>
        <translation>es nennt das Ergebnis eines Dokuments</translation>
    </message>
    <message>
        <source>it differs from machine to machine</source>
        <translation>es ist von Rechner zu Rechner verschieden</translation>
    </message>
    <message>
        <source>it is about one run</source>
        <translation>es betrifft einen einzelnen Lauf</translation>
    </message>
    <message>
        <source>there is no option &quot;%1&quot;; vantora config --example prints all there are</source>
        <translation>es gibt keine Option „%1“; vantora config --example gibt alle aus, die es gibt</translation>
    </message>
    <message>
        <source>there is no option &quot;%1&quot;; did you mean %2?</source>
        <translation>es gibt keine Option „%1“; meinten Sie %2?</translation>
    </message>
    <message>
        <source>%1 is for profiles only, since it is about particular runs; move it below a line such as [profile.scans]</source>
        <translation>%1 ist nur für Profile, denn es betrifft bestimmte Läufe; setzen Sie es unter eine Zeile wie [profile.scans]</translation>
    </message>
    <message>
        <source>a profile begins with a line such as [profile.scans]</source>
        <translation>ein Profil beginnt mit einer Zeile wie [profile.scans]</translation>
    </message>
    <message>
        <source>%1 is switched on for all runs by line %2, and only the command line switches that off, with --no-%3</source>
        <translation>%1 ist durch Zeile %2 für alle Läufe eingeschaltet, und nur die Befehlszeile schaltet das aus, mit --no-%3</translation>
    </message>
    <message>
        <source>is no regular file; put one there, or use --no-config</source>
        <translation>ist keine gewöhnliche Datei; legen Sie eine dorthin, oder nehmen Sie --no-config</translation>
    </message>
    <message>
        <source>belongs to another user, who could change what is done; take it over, or use --no-config</source>
        <translation>gehört einem anderen Benutzer, der ändern könnte, was geschieht; übernehmen Sie sie, oder nehmen Sie --no-config</translation>
    </message>
    <message>
        <source>others can write to it, and so change what is done; take that from them with chmod go-w, or use --no-config</source>
        <translation>andere können hineinschreiben und so ändern, was geschieht; nehmen Sie ihnen das mit chmod go-w, oder nehmen Sie --no-config</translation>
    </message>
    <message>
        <source>can&apos;t be read: %1; --no-config does without</source>
        <translation>kann nicht gelesen werden: %1; --no-config kommt ohne aus</translation>
    </message>
    <message>
        <source>is larger than 64 KiB, which no configuration needs; shorten it, or use --no-config</source>
        <translation>ist größer als 64 KiB, was keine Konfiguration braucht; kürzen Sie sie, oder nehmen Sie --no-config</translation>
    </message>
    <message>
        <source>is no TOML: %1</source>
        <translation>ist kein TOML: %1</translation>
    </message>
    <message>
        <source>--set %1 is not KEY=VALUE</source>
        <translation>--set %1 ist nicht KEY=VALUE</translation>
    </message>
    <message>
        <source>--set %1 stands before any --action</source>
        <translation>--set %1 steht vor jeder --action</translation>
    </message>
    <message>
        <source>--set %1 stands after a --list, which has its own</source>
        <translation>--set %1 steht nach einer --list, die eigene hat</translation>
    </message>
    <message>
        <source>--choose, --keep and --except say what goes; leave out --pages, actions and lists</source>
        <translation>--choose, --keep und --except sagen, was geht; lassen Sie --pages, Aktionen und Listen weg</translation>
    </message>
    <message>
        <source>nothing to do: name the pages to remove with --pages RANGE (or an action, a list or a favourite)</source>
        <translation>nichts zu tun: nennen Sie die Seiten, die gehen, mit --pages RANGE (oder eine Aktion, eine Liste oder einen Favoriten)</translation>
    </message>
    <message>
        <source>nothing to look for: say with --choose CHOICE which pages</source>
        <translation>nichts zu suchen: sagen Sie mit --choose CHOICE, welche Seiten</translation>
    </message>
    <message>
        <source>nothing to change: say what with --set KEY=VALUE</source>
        <translation>nichts zu ändern: sagen Sie mit --set KEY=VALUE, was</translation>
    </message>
    <message>
        <source>%1 is missing: name the documents, or a list of them with --files-from FILE</source>
        <translation>%1 fehlt: nennen Sie die Dokumente, oder eine Liste davon mit --files-from FILE</translation>
    </message>
    <message>
        <source>the name of the list of inputs is empty</source>
        <translation>der Name der Liste der Eingaben ist leer</translation>
    </message>
    <message>
        <source>the name of the list of ranges is empty</source>
        <translation>der Name der Liste der Bereiche ist leer</translation>
    </message>
    <message>
        <source>the name of the sheet is empty</source>
        <translation>der Name des Blattes ist leer</translation>
    </message>
    <message>
        <source>the name of the report is empty</source>
        <translation>der Name des Berichts ist leer</translation>
    </message>
    <message>
        <source>the name of the output is empty</source>
        <translation>der Name des Ergebnisses ist leer</translation>
    </message>
    <message>
        <source>the name of the certificate is empty</source>
        <translation>der Name der Bescheinigung ist leer</translation>
    </message>
    <message>
        <source>the name of the file for figures is empty</source>
        <translation>der Name der Datei für Kennzahlen ist leer</translation>
    </message>
    <message>
        <source>the name of the file for checksums is empty</source>
        <translation>der Name der Datei für Prüfsummen ist leer</translation>
    </message>
    <message>
        <source>the name of a folder to watch is empty</source>
        <translation>der Name eines zu beobachtenden Ordners ist leer</translation>
    </message>
    <message>
        <source>%1 needs a name</source>
        <translation>%1 braucht einen Namen</translation>
    </message>
    <message>
        <source>-0 goes with --files-from</source>
        <translation>-0 gehört zu --files-from</translation>
    </message>
    <message>
        <source>standard input (-) can be read once only</source>
        <translation>die Standardeingabe (-) kann nur einmal gelesen werden</translation>
    </message>
    <message>
        <source>standard input (-) can only be the one input</source>
        <translation>die Standardeingabe (-) kann nur die einzige Eingabe sein</translation>
    </message>
    <message>
        <source>standard input (-) has no name to write to; use -o FILE</source>
        <translation>die Standardeingabe (-) hat keinen Namen, unter dem zu schreiben wäre; nehmen Sie -o FILE</translation>
    </message>
    <message>
        <source>standard input and output (-) are not for worker processes; name files, or leave out -j, --timeout and --memory-limit</source>
        <translation>Standardeingabe und -ausgabe (-) sind nichts für Arbeitsprozesse; nennen Sie Dateien, oder lassen Sie -j, --timeout und --memory-limit weg</translation>
    </message>
    <message>
        <source>-o, -d and --in-place exclude each other</source>
        <translation>-o, -d und --in-place schließen einander aus</translation>
    </message>
    <message>
        <source>-q and -v exclude each other</source>
        <translation>-q und -v schließen einander aus</translation>
    </message>
    <message>
        <source>say where the result goes: -o FILE, -d DIR or --in-place</source>
        <translation>sagen Sie, wohin das Ergebnis kommt: -o FILE, -d DIR oder --in-place</translation>
    </message>
    <message>
        <source>say where the results go: -d DIR</source>
        <translation>sagen Sie, wohin die Ergebnisse kommen: -d DIR</translation>
    </message>
    <message>
        <source>-o takes the result of one input; for several use -d DIR</source>
        <translation>-o nimmt das Ergebnis einer Eingabe; für mehrere nehmen Sie -d DIR</translation>
    </message>
    <message>
        <source>--backup goes with --in-place</source>
        <translation>--backup gehört zu --in-place</translation>
    </message>
    <message>
        <source>--name goes with -d DIR</source>
        <translation>--name gehört zu -d DIR</translation>
    </message>
    <message>
        <source>--report-hashes goes with --report FILE</source>
        <translation>--report-hashes gehört zu --report FILE</translation>
    </message>
    <message>
        <source>--step goes with --set</source>
        <translation>--step gehört zu --set</translation>
    </message>
    <message>
        <source>--rename keeps what exists, and --overwrite and --in-place replace it</source>
        <translation>--rename behält, was da ist, und --overwrite und --in-place ersetzen es</translation>
    </message>
    <message>
        <source>--rename keeps what exists, and --overwrite replaces it</source>
        <translation>--rename behält, was da ist, und --overwrite ersetzt es</translation>
    </message>
    <message>
        <source>--json and -o - would both write to standard output</source>
        <translation>--json und -o - würden beide auf die Standardausgabe schreiben</translation>
    </message>
    <message>
        <source>--name %1: the name takes {name}, {ext} and {number} only</source>
        <translation>--name %1: der Name darf nur {name}, {ext} und {number} enthalten</translation>
    </message>
    <message>
        <source>--name %1: the name holds a slash or a single brace</source>
        <translation>--name %1: der Name enthält einen Schrägstrich oder eine einzelne Klammer</translation>
    </message>
    <message>
        <source>--name %1: the name is empty</source>
        <translation>--name %1: der Name ist leer</translation>
    </message>
    <message>
        <source>--certificate %1: the name takes {name}, {ext} and {number} only</source>
        <translation>--certificate %1: der Name darf nur {name}, {ext} und {number} enthalten</translation>
    </message>
    <message>
        <source>--certificate %1: the name holds a slash or a single brace</source>
        <translation>--certificate %1: der Name enthält einen Schrägstrich oder eine einzelne Klammer</translation>
    </message>
    <message>
        <source>--ranges says what goes of each document; leave out --pages, --choose, --keep, --except, actions and lists</source>
        <translation>--ranges sagt, was aus jedem Dokument geht; lassen Sie --pages, --choose, --keep, --except, Aktionen und Listen weg</translation>
    </message>
    <message>
        <source>--shard takes a number and how many there are, such as 1/8 to 8/8, not %1</source>
        <translation>--shard nimmt eine Nummer und wie viele es gibt, etwa 1/8 bis 8/8, nicht %1</translation>
    </message>
    <message>
        <source>--certificate and --checksums are about what is written, and a dry run writes nothing</source>
        <translation>--certificate und --checksums betreffen, was geschrieben wird, und ein Probelauf schreibt nichts</translation>
    </message>
    <message>
        <source>--accept-failures takes kinds such as empty,password-needed, not &quot;%1&quot;; did you mean %2?</source>
        <translation>--accept-failures nimmt Arten wie empty,password-needed, nicht „%1“; meinten Sie %2?</translation>
    </message>
    <message>
        <source>--accept-failures takes kinds such as empty,password-needed, not &quot;%1&quot;</source>
        <translation>--accept-failures nimmt Arten wie empty,password-needed, nicht „%1“</translation>
    </message>
    <message>
        <source>--if-empty takes blank, skip or fail, not %1</source>
        <translation>--if-empty nimmt blank, skip oder fail, nicht %1</translation>
    </message>
    <message>
        <source>--skip-existing looks for the outputs of -o FILE or -d DIR, which --rename would name anew</source>
        <translation>--skip-existing sucht die Ergebnisse von -o FILE oder -d DIR, die --rename neu benennen würde</translation>
    </message>
    <message>
        <source>-j takes a number of worker processes from 0 to 4096, not %1</source>
        <translation>-j nimmt eine Anzahl von Arbeitsprozessen von 0 bis 4096, nicht %1</translation>
    </message>
    <message>
        <source>--timeout takes seconds, or minutes such as 5m, not %1</source>
        <translation>--timeout nimmt Sekunden, oder Minuten wie 5m, nicht %1</translation>
    </message>
    <message>
        <source>--memory-limit takes a size such as 512M or 2G, not %1</source>
        <translation>--memory-limit nimmt eine Größe wie 512M oder 2G, nicht %1</translation>
    </message>
    <message>
        <source>--timeout and --memory-limit need worker processes, of which -j 0 has none</source>
        <translation>--timeout und --memory-limit brauchen Arbeitsprozesse, von denen -j 0 keine hat</translation>
    </message>
    <message>
        <source>--inside takes main-window or preview, not %1</source>
        <translation>--inside nimmt main-window oder preview, nicht %1</translation>
    </message>
    <message>
        <source>--step takes the number of a step, from 1, not %1</source>
        <translation>--step nimmt die Nummer eines Schritts, ab 1, nicht %1</translation>
    </message>
    <message>
        <source>one step is kept here; only action lists hold several</source>
        <translation>hier wird ein Schritt gespeichert; nur Aktionslisten enthalten mehrere</translation>
    </message>
    <message>
        <source>these files lie anywhere; say what to do with one: show, add, change or remove</source>
        <translation>diese Dateien liegen überall; sagen Sie, was mit einer zu tun ist: show, add, change oder remove</translation>
    </message>
    <message>
        <source>--name takes {name} and {ext}, since nobody knows how many documents will come</source>
        <translation>--name nimmt {name} und {ext}, denn niemand weiß, wie viele Dokumente kommen</translation>
    </message>
    <message>
        <source>%1 takes seconds, %2 to %3, not %4</source>
        <translation>%1 nimmt Sekunden, %2 bis %3, nicht %4</translation>
    </message>
    <message>
        <source>say which pages went, by one of --pages RANGE, --ranges FILE and --report FILE</source>
        <translation>sagen Sie, welche Seiten gingen, mit einem von --pages RANGE, --ranges FILE und --report FILE</translation>
    </message>
    <message>
        <source>--report names the documents; leave out BEFORE and AFTER</source>
        <translation>--report nennt die Dokumente; lassen Sie BEFORE und AFTER weg</translation>
    </message>
    <message>
        <source>name the document before and the document after, or two folders of them</source>
        <translation>nennen Sie das Dokument davor und das danach, oder zwei Ordner davon</translation>
    </message>
    <message>
        <source>The following arguments were not expected: %1</source>
        <translation>diese Argumente sind nicht vorgesehen: %1</translation>
    </message>
    <message>
        <source>The following argument was not expected: %1</source>
        <translation>dieses Argument ist nicht vorgesehen: %1</translation>
    </message>
    <message>
        <source>%1: %2 required %3 missing</source>
        <translation>%1: %2 %3 fehlt noch</translation>
    </message>
    <message>
        <source>%1 is required</source>
        <translation>%1 muss angegeben werden</translation>
    </message>
    <message>
        <source>%1 excludes %2</source>
        <translation>%1 schließt %2 aus</translation>
    </message>
    <message>
        <source>%1 requires %2</source>
        <translation>%1 braucht %2</translation>
    </message>
    <message>
        <source>%1 was given a disallowed flag override</source>
        <translation>%1 nimmt keinen Wert</translation>
    </message>
    <message>
        <source>%1: At least %2 required but received %3</source>
        <translation>%1: mindestens %2 müssen es sein, nicht %3</translation>
    </message>
    <message>
        <source>%1: At Most %2 required but received %3</source>
        <translation>%1: höchstens %2 dürfen es sein, nicht %3</translation>
    </message>
    <message>
        <source>Expected at least %1 arguments to %2, got %3</source>
        <translation>mindestens %1 Argumente braucht %2, nicht %3</translation>
    </message>
    <message>
        <source>Expected exactly %1 arguments to %2, got %3</source>
        <translation>genau %1 Argumente braucht %2, nicht %3</translation>
    </message>
    <message>
        <source>Could not convert: %1 = %2</source>
        <translation>kein brauchbarer Wert: %1 = %2</translation>
    </message>
    <message>
        <source>%1: Should be true/false or a number</source>
        <translation>%1: true, false oder eine Zahl wird gebraucht</translation>
    </message>
    <message>
        <source>%1: too many inputs for a flag</source>
        <translation>%1: zu viele Werte für einen Schalter</translation>
    </message>
    <message>
        <source>%1 not found</source>
        <translation>%1 ist nicht zu finden</translation>
    </message>
    <message>
        <source>A subcommand is required</source>
        <translation>ein Befehl wird gebraucht</translation>
    </message>
    <message>
        <source>there is no such file</source>
        <translation>die Datei gibt es nicht</translation>
    </message>
    <message>
        <source>is a folder, not a file</source>
        <translation>ist ein Ordner, keine Datei</translation>
    </message>
    <message>
        <source>is a device or pipe, not a file</source>
        <translation>ist ein Gerät oder eine Pipe, keine Datei</translation>
    </message>
    <message>
        <source>is empty (0 bytes)</source>
        <translation>ist leer (0 Byte)</translation>
    </message>
    <message>
        <source>is no PDF: it does not begin with %PDF-</source>
        <translation>ist kein PDF: die Datei beginnt nicht mit %PDF-</translation>
    </message>
    <message>
        <source>damaged beyond repair</source>
        <translation>so beschädigt, dass nichts zu retten ist</translation>
    </message>
    <message>
        <source>damaged beyond repair: %1</source>
        <translation>so beschädigt, dass nichts zu retten ist: %1</translation>
    </message>
    <message>
        <source>damaged: none of its pages can be recovered</source>
        <translation>beschädigt: keine seiner Seiten ist zu retten</translation>
    </message>
    <message>
        <source>damaged: %1</source>
        <translation>beschädigt: %1</translation>
    </message>
    <message>
        <source>is encrypted and needs a password</source>
        <translation>ist verschlüsselt und braucht ein Passwort</translation>
    </message>
    <message>
        <source>the password given does not open it</source>
        <translation>das angegebene Passwort öffnet es nicht</translation>
    </message>
    <message>
        <source>none of the %1 passwords given opens it</source>
        <translation>keines der %1 angegebenen Passwörter öffnet es</translation>
    </message>
    <message>
        <source>its table of objects was damaged and has been rebuilt</source>
        <translation>seine Objekttabelle war beschädigt und wurde neu aufgebaut</translation>
    </message>
    <message>
        <source>it is signed in field &quot;%1&quot;, and no signature holds once it is changed</source>
        <translation>es ist im Feld „%1“ signiert, und keine Signatur gilt noch, wenn es geändert wird</translation>
    </message>
    <message>
        <source>can&apos;t be opened</source>
        <translation>lässt sich nicht öffnen</translation>
    </message>
    <message>
        <source>has no pages</source>
        <translation>hat keine Seiten</translation>
    </message>
    <message>
        <source>can&apos;t be saved</source>
        <translation>lässt sich nicht speichern</translation>
    </message>
    <message>
        <source>there is not enough memory for it</source>
        <translation>dafür reicht der Arbeitsspeicher nicht</translation>
    </message>
    <message>
        <source>it has %1 pages after the actions where %2 were to be left</source>
        <translation>es hat nach den Aktionen %1 Seiten, wo %2 übrig sein sollten</translation>
    </message>
    <message>
        <source>the range %1 names every page, so none would be left</source>
        <translation>der Bereich %1 nennt jede Seite, sodass keine übrig bliebe</translation>
    </message>
    <message>
        <source>the range %1 names every page; the document is left out</source>
        <translation>der Bereich %1 nennt jede Seite; das Dokument wird ausgelassen</translation>
    </message>
    <message>
        <source>the range %1 names every page; one blank page is left</source>
        <translation>der Bereich %1 nennt jede Seite; eine leere Seite bleibt</translation>
    </message>
    <message>
        <source>the range %1 names pages up to %2, but the document has %3 page; none was taken out</source>
        <translation>der Bereich %1 nennt Seiten bis %2, aber das Dokument hat %3 Seite; keine wurde entfernt</translation>
    </message>
    <message>
        <source>the range %1 names pages up to %2, but the document has %3 pages; none was taken out</source>
        <translation>der Bereich %1 nennt Seiten bis %2, aber das Dokument hat %3 Seiten; keine wurde entfernt</translation>
    </message>
    <message>
        <source>the range %1 names pages up to %2, but the document has %3 pages</source>
        <translation>der Bereich %1 nennt Seiten bis %2, aber das Dokument hat %3 Seiten</translation>
    </message>
    <message>
        <source>the range %1 names pages up to %2, but the document has %3 page</source>
        <translation>der Bereich %1 nennt Seiten bis %2, aber das Dokument hat %3 Seite</translation>
    </message>
    <message>
        <source>was changed while it was looked at</source>
        <translation>wurde geändert, während es angesehen wurde</translation>
    </message>
    <message>
        <source>it can&apos;t be drawn</source>
        <translation>sie lässt sich nicht zeichnen</translation>
    </message>
    <message>
        <source>the folder can&apos;t be read: %1</source>
        <translation>der Ordner kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>choose a folder for the results</source>
        <translation>wählen Sie einen Ordner für die Ergebnisse</translation>
    </message>
    <message>
        <source>the name &quot;%1&quot; takes {name}, {ext} and {number} only</source>
        <translation>der Name „%1“ darf nur {name}, {ext} und {number} enthalten</translation>
    </message>
    <message>
        <source>the name &quot;%1&quot; holds a slash or a single brace</source>
        <translation>der Name „%1“ enthält einen Schrägstrich oder eine einzelne Klammer</translation>
    </message>
    <message>
        <source>the name &quot;%1&quot; is empty</source>
        <translation>der Name „%1“ ist leer</translation>
    </message>
    <message>
        <source>the output %1 exists already</source>
        <translation>das Ergebnis %1 gibt es schon</translation>
    </message>
    <message>
        <source>the output %1 is a folder</source>
        <translation>das Ergebnis %1 ist ein Ordner</translation>
    </message>
    <message>
        <source>the output %1 is a device or pipe, not a file</source>
        <translation>das Ergebnis %1 ist ein Gerät oder eine Pipe, keine Datei</translation>
    </message>
    <message>
        <source>the output %1 is the input itself</source>
        <translation>das Ergebnis %1 ist das Dokument selbst</translation>
    </message>
    <message>
        <source>the output %1 is the input %2</source>
        <translation>das Ergebnis %1 ist das Dokument %2</translation>
    </message>
    <message>
        <source>the output %1 got lost</source>
        <translation>das Ergebnis %1 ging verloren</translation>
    </message>
    <message>
        <source>it is named twice</source>
        <translation>es kommt zweimal vor</translation>
    </message>
    <message>
        <source>%1 would be written to %2, too</source>
        <translation>auch %1 würde nach %2 geschrieben</translation>
    </message>
    <message>
        <source>%1 is the same file</source>
        <translation>%1 ist dieselbe Datei</translation>
    </message>
    <message>
        <source>the output folder %1 is not there</source>
        <translation>den Ergebnisordner %1 gibt es nicht</translation>
    </message>
    <message>
        <source>the output folder %1 can&apos;t be made: %2</source>
        <translation>der Ergebnisordner %1 kann nicht angelegt werden: %2</translation>
    </message>
    <message>
        <source>the output folder %1 can&apos;t be used: %2</source>
        <translation>der Ergebnisordner %1 kann nicht benutzt werden: %2</translation>
    </message>
    <message>
        <source>the output folder %1 was exchanged for another one while the run was at work</source>
        <translation>der Ergebnisordner %1 wurde während des Laufs gegen einen anderen ausgetauscht</translation>
    </message>
    <message>
        <source>the output folder %1 is a link or lies behind one, and outputs stay in the folder that was named</source>
        <translation>der Ergebnisordner %1 ist ein Link oder liegt hinter einem, und Ergebnisse bleiben im genannten Ordner</translation>
    </message>
    <message>
        <source>the backup %1 exists already</source>
        <translation>die Sicherung %1 gibt es schon</translation>
    </message>
    <message>
        <source>the backup %1 can&apos;t be made: %2</source>
        <translation>die Sicherung %1 kann nicht angelegt werden: %2</translation>
    </message>
    <message>
        <source>the backup %1 is itself an input</source>
        <translation>die Sicherung %1 ist selbst eines der Dokumente</translation>
    </message>
    <message>
        <source>its owner or mode could not be kept: only the owner and the administrator may give a file to others</source>
        <translation>Eigentümer oder Rechte konnten nicht beibehalten werden: nur der Eigentümer und der Administrator dürfen eine Datei anderen geben</translation>
    </message>
    <message>
        <source>is not there any more</source>
        <translation>gibt es nicht mehr</translation>
    </message>
    <message>
        <source>was changed after the run</source>
        <translation>wurde nach dem Lauf geändert</translation>
    </message>
    <message>
        <source>has no backup %1</source>
        <translation>hat keine Sicherung %1</translation>
    </message>
    <message>
        <source>its backup %1 is not the original any more</source>
        <translation>die Sicherung %1 ist nicht mehr das Original</translation>
    </message>
    <message>
        <source>is just being changed</source>
        <translation>wird gerade geändert</translation>
    </message>
    <message>
        <source>replaced a file, which was not kept</source>
        <translation>ersetzte eine Datei, die nicht behalten wurde</translation>
    </message>
    <message>
        <source>is a file beside its original</source>
        <translation>ist eine Datei neben ihrem Original</translation>
    </message>
    <message>
        <source>it took longer than %1</source>
        <translation>es dauerte länger als %1</translation>
    </message>
    <message>
        <source>it needs more memory than its worker may use, %1 MB</source>
        <translation>es braucht mehr Speicher, als sein Prozess benutzen darf, %1 MB</translation>
    </message>
    <message>
        <source>the worker process that was at it ended: %1</source>
        <translation>der Prozess, der daran arbeitete, endete: %1</translation>
    </message>
    <message>
        <source>a worker process can&apos;t be started: %1</source>
        <translation>ein Arbeitsprozess kann nicht gestartet werden: %1</translation>
    </message>
    <message>
        <source>the report can&apos;t be read: %1</source>
        <translation>der Bericht kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>the report can&apos;t be written: %1</source>
        <translation>der Bericht kann nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>another run is writing this report</source>
        <translation>ein anderer Lauf schreibt diesen Bericht</translation>
    </message>
    <message>
        <source>others can write to this report</source>
        <translation>andere können in diesen Bericht schreiben</translation>
    </message>
    <message>
        <source>there is no step to be saved</source>
        <translation>es gibt keinen Schritt, der gespeichert werden kann</translation>
    </message>
    <message>
        <source>the action &quot;%1&quot; is not installed</source>
        <translation>die Aktion „%1“ ist nicht installiert</translation>
    </message>
    <message>
        <source>the action list holds no steps</source>
        <translation>die Aktionsliste enthält keine Schritte</translation>
    </message>
    <message>
        <source>not an action list: it holds no steps</source>
        <translation>keine Aktionsliste: enthält keine Schritte</translation>
    </message>
    <message>
        <source>not a favourite: it holds no options</source>
        <translation>kein Favorit: enthält keine Optionen</translation>
    </message>
    <message>
        <source>not a tool-settings file: it holds no options</source>
        <translation>keine Werkzeugeinstellungen: enthält keine Optionen</translation>
    </message>
    <message>
        <source>its options are damaged</source>
        <translation>die Optionen darin sind beschädigt</translation>
    </message>
    <message>
        <source>its options don&apos;t say which action they are for</source>
        <translation>die Optionen darin sagen nicht, zu welcher Aktion sie gehören</translation>
    </message>
    <message>
        <source>no action list of this name is saved</source>
        <translation>es ist keine Aktionsliste dieses Namens gespeichert</translation>
    </message>
    <message>
        <source>no favourite of this name is saved</source>
        <translation>es ist kein Favorit dieses Namens gespeichert</translation>
    </message>
    <message>
        <source>the name is empty</source>
        <translation>der Name ist leer</translation>
    </message>
    <message>
        <source>the name is too long</source>
        <translation>der Name ist zu lang</translation>
    </message>
    <message>
        <source>a name must not contain a slash or a backslash</source>
        <translation>ein Name darf keinen Schrägstrich und keinen umgekehrten enthalten</translation>
    </message>
    <message>
        <source>a name that ends in .xqq stands for a file, not for a list of yours</source>
        <translation>ein Name, der auf .xqq endet, steht für eine Datei, nicht für eine Ihrer Listen</translation>
    </message>
    <message>
        <source>the list is full</source>
        <translation>die Liste ist voll</translation>
    </message>
    <message>
        <source>can&apos;t be written</source>
        <translation>kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>exists already</source>
        <translation>gibt es schon</translation>
    </message>
    <message>
        <source>names no page</source>
        <translation>nennt keine Seite</translation>
    </message>
    <message>
        <source>names page 0, and pages count from 1</source>
        <translation>nennt Seite 0, gezählt wird ab 1</translation>
    </message>
    <message>
        <source>begins with a comma</source>
        <translation>beginnt mit einem Komma</translation>
    </message>
    <message>
        <source>ends with a comma</source>
        <translation>endet mit einem Komma</translation>
    </message>
    <message>
        <source>has two commas with no page between them</source>
        <translation>hat zwei Kommas ohne Seite dazwischen</translation>
    </message>
    <message>
        <source>has %1, which is no page number</source>
        <translation>enthält %1, und das ist keine Seitenzahl</translation>
    </message>
    <message>
        <source>has %1, which is not written in the digits 0 to 9: %2 would have meant %3</source>
        <translation>enthält %1, was nicht mit den Ziffern 0 bis 9 geschrieben ist: %2 hätte %3 bedeutet</translation>
    </message>
    <message>
        <source>has zeros before %1; write %2</source>
        <translation>hat Nullen vor %1; schreiben Sie %2</translation>
    </message>
    <message>
        <source>has a number in %1 that is higher than %2, the highest of a page: it would have meant %3</source>
        <translation>hat in %1 eine Zahl über %2, der höchsten einer Seite: das hätte %3 bedeutet</translation>
    </message>
    <message>
        <source>has a space inside a number in %1: it would have meant %2; write a comma between pages</source>
        <translation>hat in %1 ein Leerzeichen in einer Zahl: das hätte %2 bedeutet; schreiben Sie ein Komma zwischen Seiten</translation>
    </message>
    <message>
        <source>names one page as a range in %1; write %2</source>
        <translation>nennt mit %1 eine einzelne Seite als Bereich; schreiben Sie %2</translation>
    </message>
    <message>
        <source>goes down at %1; write %2</source>
        <translation>geht bei %1 abwärts; schreiben Sie %2</translation>
    </message>
    <message>
        <source>has more than one dash in %1; write a comma between ranges</source>
        <translation>hat mehr als einen Strich in %1; schreiben Sie ein Komma zwischen Bereiche</translation>
    </message>
    <message>
        <source>has a dash without pages</source>
        <translation>hat einen Strich ohne Seiten</translation>
    </message>
    <message>
        <source>has no page after the dash of %1; write the last one, too (vantora info tells how many there are)</source>
        <translation>hat keine Seite nach dem Strich von %1; schreiben Sie auch die letzte (vantora info sagt, wie viele es gibt)</translation>
    </message>
    <message>
        <source>has no page before the dash of %1; write %2</source>
        <translation>hat keine Seite vor dem Strich von %1; schreiben Sie %2</translation>
    </message>
    <message>
        <source>has the dash %1 in %2, which is not the one of a keyboard; write %3</source>
        <translation>hat den Strich %1 in %2, der nicht der einer Tastatur ist; schreiben Sie %3</translation>
    </message>
    <message>
        <source>has a semicolon in %1; write %2</source>
        <translation>hat ein Semikolon in %1; schreiben Sie %2</translation>
    </message>
    <message>
        <source>has %1, and pages go by their numbers alone; write the number, also for the last page (vantora info tells it)</source>
        <translation>enthält %1, und Seiten werden nur mit ihren Nummern genannt; schreiben Sie die Nummer, auch für die letzte Seite (vantora info nennt sie)</translation>
    </message>
    <message>
        <source>has a tab or the end of a line within; write a comma between the pages</source>
        <translation>enthält einen Tabulator oder ein Zeilenende; schreiben Sie ein Komma zwischen die Seiten</translation>
    </message>
    <message>
        <source>has white space in it that is not a space; leave it out</source>
        <translation>enthält Leerraum, der kein Leerzeichen ist; lassen Sie ihn weg</translation>
    </message>
    <message>
        <source>no page at all</source>
        <translation>keine Seite</translation>
    </message>
    <message>
        <source>page %1</source>
        <translation>Seite %1</translation>
    </message>
    <message>
        <source>pages %1 to the end</source>
        <translation>die Seiten von %1 bis zum Ende</translation>
    </message>
    <message>
        <source>pages %1 to %2</source>
        <translation>die Seiten %1 bis %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs a page range such as 1,4-6,9-15,21; this one %2</source>
        <translation>„%1“ braucht einen Seitenbereich wie 1,4-6,9-15,21; dieser %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs a number of pages, from 1</source>
        <translation>„%1“ braucht eine Anzahl von Seiten, ab 1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs words, or a regular expression between slashes</source>
        <translation>„%1“ braucht Wörter oder einen regulären Ausdruck zwischen Schrägstrichen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no regular expression: %2 at character %3</source>
        <translation>„%1“ ist kein regulärer Ausdruck: %2 bei Zeichen %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs a paper format such as A4 or Letter, or a size such as 210x297mm</source>
        <translation>„%1“ braucht ein Papierformat wie A4 oder Letter oder eine Größe wie 210x297mm</translation>
    </message>
    <message>
        <source>the list of ranges can&apos;t be read: %1</source>
        <translation>die Liste der Bereiche kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>line %1 names &quot;%2&quot;, as line %3 does</source>
        <translation>Zeile %1 nennt „%2“ wie schon Zeile %3</translation>
    </message>
    <message>
        <source>line %1 names &quot;%2&quot;, %3</source>
        <translation>Zeile %1 nennt „%2“, %3</translation>
    </message>
    <message>
        <source>line %1 has no range; a line is a path, a tab (or a comma) and a range</source>
        <translation>Zeile %1 hat keinen Bereich; eine Zeile ist ein Pfad, ein Tabulator (oder Komma) und ein Bereich</translation>
    </message>
    <message>
        <source>line %1 has the page range &quot;%2&quot;, which %3</source>
        <translation>Zeile %1 hat den Seitenbereich „%2“; dieser %3</translation>
    </message>
    <message>
        <source>line %1 names no document</source>
        <translation>Zeile %1 nennt kein Dokument</translation>
    </message>
    <message>
        <source>line %1 opens a quote that nothing closes</source>
        <translation>Zeile %1 öffnet ein Anführungszeichen, das nichts schließt</translation>
    </message>
    <message>
        <source>check its permissions</source>
        <translation>prüfen Sie die Zugriffsrechte</translation>
    </message>
    <message>
        <source>get an undamaged copy of it</source>
        <translation>besorgen Sie eine unbeschädigte Kopie</translation>
    </message>
    <message>
        <source>decrypt it with the program that encrypted it</source>
        <translation>entschlüsseln Sie es mit dem Programm, das es verschlüsselt hat</translation>
    </message>
    <message>
        <source>check space and permissions there, or name another place</source>
        <translation>prüfen Sie dort Platz und Zugriffsrechte, oder nennen Sie einen anderen Ort</translation>
    </message>
    <message>
        <source>move it away, since no backup is ever replaced</source>
        <translation>legen Sie sie anderswohin, denn Sicherungen werden nie ersetzt</translation>
    </message>
    <message>
        <source>there is nothing to give back</source>
        <translation>es gibt nichts zurückzugeben</translation>
    </message>
    <message>
        <source>look at both, and put it back by hand if what was changed isn&apos;t needed</source>
        <translation>sehen Sie beide an, und stellen Sie das Original von Hand wieder her, wenn die Änderungen nicht gebraucht werden</translation>
    </message>
    <message>
        <source>run it again</source>
        <translation>führen Sie es noch einmal aus</translation>
    </message>
    <message>
        <source>the installation is incomplete; install it again</source>
        <translation>die Installation ist unvollständig; installieren Sie das Programm neu</translation>
    </message>
    <message>
        <source>a valid one is 1,4-6,9-15,21</source>
        <translation>gültig ist z. B. 1,4-6,9-15,21</translation>
    </message>
    <message>
        <source>leave out the document over which it ended, and run all of it again</source>
        <translation>lassen Sie das Dokument aus, bei dem er endete, und führen Sie alles noch einmal aus</translation>
    </message>
    <message>
        <source>name it otherwise</source>
        <translation>wählen Sie einen anderen Namen</translation>
    </message>
    <message>
        <source>the worker process that was at it ended: %1; so did a fresh one that had nothing else: %2</source>
        <translation>der Prozess, der daran arbeitete, endete: %1; ebenso ein neuer, der sonst nichts hatte: %2</translation>
    </message>
    <message>
        <source>the worker process that was at it made no sense</source>
        <translation>der Prozess, der daran arbeitete, gab Unsinn von sich</translation>
    </message>
    <message>
        <source>the worker process that was at it gave an answer that makes no sense</source>
        <translation>der Prozess, der daran arbeitete, gab eine unsinnige Antwort</translation>
    </message>
    <message>
        <source>worker processes don&apos;t begin within %1</source>
        <translation>Arbeitsprozesse beginnen nicht innerhalb von %1</translation>
    </message>
    <message>
        <source>worker processes answer with what makes no sense</source>
        <translation>Arbeitsprozesse geben unsinnige Antworten</translation>
    </message>
    <message>
        <source>worker processes end before they begin: %1</source>
        <translation>Arbeitsprozesse enden, bevor sie beginnen: %1</translation>
    </message>
    <message>
        <source>not done: the run ended with its one worker process over %1; its actions may have to see all of a run, which no other one can go on with</source>
        <translation>nicht bearbeitet: der Lauf endete mit seinem einen Arbeitsprozess, bei %1; seine Aktionen müssen vielleicht einen ganzen Lauf sehen, den kein anderer fortsetzen kann</translation>
    </message>
    <message>
        <source>not done: the run ended with its one worker process: %1; its actions may have to see all of a run, which no other one can go on with</source>
        <translation>nicht bearbeitet: der Lauf endete mit seinem einen Arbeitsprozess: %1; seine Aktionen müssen vielleicht einen ganzen Lauf sehen, den kein anderer fortsetzen kann</translation>
    </message>
    <message>
        <source>the actions were not told that the run is over: the worker process ended over %1</source>
        <translation>die Aktionen erfuhren nicht, dass der Lauf vorbei ist: der Arbeitsprozess endete bei %1</translation>
    </message>
    <message>
        <source>the actions were not told that the run is over: the worker process ended: %1</source>
        <translation>die Aktionen erfuhren nicht, dass der Lauf vorbei ist: der Arbeitsprozess endete: %1</translation>
    </message>
    <message>
        <source>this is no order for a worker of this version</source>
        <translation>das ist kein Auftrag für einen Arbeitsprozess dieser Version</translation>
    </message>
    <message>
        <source>the options of a step can&apos;t be read</source>
        <translation>die Optionen eines Schritts können nicht gelesen werden</translation>
    </message>
    <message>
        <source>not done</source>
        <translation>nicht bearbeitet</translation>
    </message>
    <message>
        <source>interrupted</source>
        <translation>unterbrochen</translation>
    </message>
    <message>
        <source>1 second</source>
        <translation>1 Sekunde</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 Sekunden</translation>
    </message>
    <message>
        <source>others than you may change %1; forbid it by chmod go-w, and own it yourself</source>
        <translation>andere als Sie dürfen %1 ändern; verbieten Sie das mit chmod go-w, und machen Sie sich zum Eigentümer</translation>
    </message>
    <message>
        <source>the PDF library failed with code %1</source>
        <translation>die PDF-Bibliothek scheiterte mit Code %1</translation>
    </message>
    <message>
        <source>the page range &quot;%1&quot; %2; a valid one is 1,4-6,9-15,21</source>
        <translation>der Seitenbereich „%1“ %2; gültig ist z. B. 1,4-6,9-15,21</translation>
    </message>
    <message>
        <source>the page range &quot;%1&quot; %2</source>
        <translation>der Seitenbereich „%1“ %2</translation>
    </message>
    <message>
        <source>not a plug-in</source>
        <translation>kein Plug-in</translation>
    </message>
    <message>
        <source>a plug-in of another kind: %1</source>
        <translation>ein Plug-in anderer Art: %1</translation>
    </message>
    <message>
        <source>the same action as %1</source>
        <translation>dieselbe Aktion wie %1</translation>
    </message>
    <message>
        <source>its root object doesn&apos;t offer the action interface</source>
        <translation>sein Wurzelobjekt bietet die Schnittstelle für Aktionen nicht an</translation>
    </message>
    <message>
        <source>no action is installed</source>
        <translation>es ist keine Aktion installiert</translation>
    </message>
    <message>
        <source>no action &quot;%1&quot; is installed, only: %2; there is an action list of that name: --list &quot;%3&quot;; there is a favourite of that name: --favourite &quot;%4&quot;</source>
        <translation>es ist keine Aktion „%1“ installiert, nur: %2; es gibt eine Aktionsliste dieses Namens: --list &quot;%3&quot;; es gibt einen Favoriten dieses Namens: --favourite &quot;%4&quot;</translation>
    </message>
    <message>
        <source>no action &quot;%1&quot; is installed, only: %2; there is an action list of that name: --list &quot;%3&quot;</source>
        <translation>es ist keine Aktion „%1“ installiert, nur: %2; es gibt eine Aktionsliste dieses Namens: --list &quot;%3&quot;</translation>
    </message>
    <message>
        <source>no action &quot;%1&quot; is installed, only: %2; there is a favourite of that name: --favourite &quot;%3&quot;</source>
        <translation>es ist keine Aktion „%1“ installiert, nur: %2; es gibt einen Favoriten dieses Namens: --favourite &quot;%3&quot;</translation>
    </message>
    <message>
        <source>no action &quot;%1&quot; is installed, only: %2</source>
        <translation>es ist keine Aktion „%1“ installiert, nur: %2</translation>
    </message>
    <message>
        <source>the action list has %1 steps, more than the %2 that a list may have</source>
        <translation>die Aktionsliste hat %1 Schritte, mehr als die %2, die eine Liste haben darf</translation>
    </message>
    <message>
        <source>its step %1 names no action</source>
        <translation>ihr Schritt %1 nennt keine Aktion</translation>
    </message>
    <message>
        <source>the options of its step %1 are missing or damaged</source>
        <translation>die Optionen ihres Schritts %1 fehlen oder sind beschädigt</translation>
    </message>
    <message>
        <source>no action list of this name is saved, and files of lists end in .xqq</source>
        <translation>es ist keine Aktionsliste dieses Namens gespeichert, und Dateien von Listen enden auf .xqq</translation>
    </message>
    <message>
        <source>action &quot;%1&quot; has no option &quot;%2&quot;, only: %3</source>
        <translation>die Aktion „%1“ hat keine Option „%2“, nur: %3</translation>
    </message>
    <message>
        <source>action &quot;%1&quot; has no option &quot;%2&quot;, but has %3</source>
        <translation>die Aktion „%1“ hat keine Option „%2“, aber %3</translation>
    </message>
    <message>
        <source>action &quot;%1&quot; has no pages to choose</source>
        <translation>die Aktion „%1“ hat keine Seiten, die auszuwählen wären</translation>
    </message>
    <message>
        <source>pages can be chosen by what they are in the first step of a run only</source>
        <translation>Seiten können nur im ersten Schritt eines Laufs nach dem ausgewählt werden, was sie sind</translation>
    </message>
    <message>
        <source>no list of ranges says which of its pages go</source>
        <translation>keine Liste von Bereichen sagt, welche seiner Seiten gehen</translation>
    </message>
    <message>
        <source>step %1, action &quot;%2&quot;: %3</source>
        <translation>Schritt %1, Aktion „%2“: %3</translation>
    </message>
    <message>
        <source>action &quot;%1&quot;: %2</source>
        <translation>Aktion „%1“: %2</translation>
    </message>
    <message>
        <source>in step %1, the range %2 names pages up to %3, but the document has %4 pages; none was taken out</source>
        <translation>in Schritt %1 nennt der Bereich %2 Seiten bis %3, aber das Dokument hat %4 Seiten; keine wurde entfernt</translation>
    </message>
    <message>
        <source>in step %1, the range %2 names pages up to %3, but the document has %4 page; none was taken out</source>
        <translation>in Schritt %1 nennt der Bereich %2 Seiten bis %3, aber das Dokument hat %4 Seite; keine wurde entfernt</translation>
    </message>
    <message>
        <source>in step %1, the range %2 names pages up to %3, but the document has %4 pages</source>
        <translation>in Schritt %1 nennt der Bereich %2 Seiten bis %3, aber das Dokument hat %4 Seiten</translation>
    </message>
    <message>
        <source>in step %1, the range %2 names pages up to %3, but the document has %4 page</source>
        <translation>in Schritt %1 nennt der Bereich %2 Seiten bis %3, aber das Dokument hat %4 Seite</translation>
    </message>
    <message>
        <source>in step %1, the range %2 names every page, so none would be left</source>
        <translation>in Schritt %1 nennt der Bereich %2 jede Seite, sodass keine übrig bliebe</translation>
    </message>
    <message>
        <source>in step %1, the range %2 names every page; the document is left out</source>
        <translation>in Schritt %1 nennt der Bereich %2 jede Seite; das Dokument wird ausgelassen</translation>
    </message>
    <message>
        <source>in step %1, the range %2 names every page; one blank page is left</source>
        <translation>in Schritt %1 nennt der Bereich %2 jede Seite; eine leere Seite bleibt</translation>
    </message>
    <message>
        <source>it threw an exception: %1</source>
        <translation>sie warf eine Ausnahme: %1</translation>
    </message>
    <message>
        <source>it threw an exception</source>
        <translation>sie warf eine Ausnahme</translation>
    </message>
    <message>
        <source>it failed with result %1 and no message</source>
        <translation>sie scheiterte mit dem Ergebnis %1 und ohne Meldung</translation>
    </message>
    <message>
        <source>there is a favourite of this name</source>
        <translation>es gibt schon einen Favoriten dieses Namens</translation>
    </message>
    <message>
        <source>its only step can&apos;t be removed without the list</source>
        <translation>ihr einziger Schritt kann nicht ohne die Liste entfernt werden</translation>
    </message>
    <message>
        <source>can&apos;t be removed: %1</source>
        <translation>kann nicht entfernt werden: %1</translation>
    </message>
    <message>
        <source>a name must not be &quot;.&quot; or &quot;..&quot;</source>
        <translation>ein Name darf nicht „.“ oder „..“ sein</translation>
    </message>
    <message>
        <source>a name must not contain line breaks, tabs or other control characters</source>
        <translation>ein Name darf keine Zeilenumbrüche, Tabulatoren oder andere Steuerzeichen enthalten</translation>
    </message>
    <message>
        <source>the name contains characters that file names can&apos;t have on this system</source>
        <translation>der Name enthält Zeichen, die Dateinamen auf diesem System nicht haben können</translation>
    </message>
    <message>
        <source>this is not a file</source>
        <translation>das ist keine Datei</translation>
    </message>
    <message>
        <source>the file is too large</source>
        <translation>die Datei ist zu groß</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs a step such as 3 (pages 3, 6, 9) or 3+1 (pages 1, 4, 7)</source>
        <translation>„%1“ braucht eine Schrittweite wie 3 (Seiten 3, 6, 9) oder 3+1 (Seiten 1, 4, 7)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs a name after the colon</source>
        <translation>„%1“ braucht einen Namen nach dem Doppelpunkt</translation>
    </message>
    <message>
        <source>&quot;%1&quot; can only be blank or blank:strict</source>
        <translation>„%1“ kann nur blank oder blank:strict sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not say how to choose pages; there are %2</source>
        <translation>„%1“ sagt nicht, wie Seiten auszuwählen sind; es gibt %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has a colon too many; write %2</source>
        <translation>„%1“ hat einen Doppelpunkt zu viel; schreiben Sie %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; says too little; write for example %2</source>
        <translation>„%1“ sagt zu wenig; schreiben Sie zum Beispiel %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes pages out of a choice, and there is none</source>
        <translation>„%1“ nimmt Seiten aus einer Auswahl, und es gibt keine</translation>
    </message>
    <message>
        <source>pages to remove (&quot;%1&quot;) and the only pages to keep (&quot;%2&quot;) can&apos;t be chosen together</source>
        <translation>Seiten, die gehen („%1“), und die einzigen, die bleiben („%2“), können nicht zusammen ausgewählt werden</translation>
    </message>
    <message>
        <source>which line %1 names, too</source>
        <translation>das auch Zeile %1 nennt</translation>
    </message>
    <message>
        <source>which is standard input and no file</source>
        <translation>das die Standardeingabe ist und keine Datei</translation>
    </message>
    <message>
        <source>which is not there</source>
        <translation>das es nicht gibt</translation>
    </message>
    <message>
        <source>which can&apos;t be looked at: %1</source>
        <translation>das nicht angesehen werden kann: %1</translation>
    </message>
    <message>
        <source>which is a folder</source>
        <translation>das ein Ordner ist</translation>
    </message>
    <message>
        <source>which is none of the inputs</source>
        <translation>das keine der Eingaben ist</translation>
    </message>
    <message>
        <source>text of pages %1 can&apos;t be read, as their fonts don&apos;t say which characters they show</source>
        <translation>Text der Seiten %1 kann nicht gelesen werden, da ihre Schriften nicht sagen, welche Zeichen sie zeigen</translation>
    </message>
    <message>
        <source>has unreadable labels</source>
        <translation>hat unlesbare Seitenbezeichnungen</translation>
    </message>
    <message>
        <source>has a page without a size</source>
        <translation>hat eine Seite ohne Größe</translation>
    </message>
    <message>
        <source>has a page whose text can&apos;t be read</source>
        <translation>hat eine Seite, deren Text nicht gelesen werden kann</translation>
    </message>
    <message>
        <source>has a page that can&apos;t be shown</source>
        <translation>hat eine Seite, die nicht gezeigt werden kann</translation>
    </message>
    <message>
        <source>has an unreadable outline</source>
        <translation>hat unlesbare Lesezeichen</translation>
    </message>
    <message>
        <source>line %1 has text after a quote that closes; a quote within is doubled</source>
        <translation>Zeile %1 hat Text nach einem schließenden Anführungszeichen; eines im Text wird verdoppelt</translation>
    </message>
    <message>
        <source>line %1 has a range of more than %2 characters</source>
        <translation>Zeile %1 hat einen Bereich von mehr als %2 Zeichen</translation>
    </message>
    <message>
        <source>line %1 has more than a path and a range; what holds a comma stands in quotes, such as &quot;1,4-6&quot;</source>
        <translation>Zeile %1 hat mehr als einen Pfad und einen Bereich; was ein Komma enthält, steht in Anführungszeichen, etwa &quot;1,4-6&quot;</translation>
    </message>
    <message>
        <source>line %1 has more than a path and a range; what holds a tab stands in quotes, such as &quot;1,4-6&quot;</source>
        <translation>Zeile %1 hat mehr als einen Pfad und einen Bereich; was einen Tabulator enthält, steht in Anführungszeichen, etwa &quot;1,4-6&quot;</translation>
    </message>
    <message>
        <source>line %1 names a document by what is no path</source>
        <translation>Zeile %1 nennt ein Dokument mit etwas, das kein Pfad ist</translation>
    </message>
    <message>
        <source>line %1 is one more than the %2 documents that a list may name</source>
        <translation>Zeile %1 ist eine mehr als die %2 Dokumente, die eine Liste nennen darf</translation>
    </message>
    <message>
        <source>is larger than %1 MiB</source>
        <translation>ist größer als %1 MiB</translation>
    </message>
    <message>
        <source>was changed, or another file was put in its place, before it was opened</source>
        <translation>wurde geändert oder durch eine andere Datei ersetzt, bevor es geöffnet war</translation>
    </message>
    <message>
        <source>standard output can&apos;t be written</source>
        <translation>auf die Standardausgabe kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>the output %1: %2</source>
        <translation>das Ergebnis %1: %2</translation>
    </message>
    <message>
        <source>the output is not verified, and so not written: %1 (and %2 more)</source>
        <translation>das Ergebnis ist nicht geprüft und daher nicht geschrieben: %1 (und %2 weitere)</translation>
    </message>
    <message>
        <source>the output is not verified, and so not written: %1</source>
        <translation>das Ergebnis ist nicht geprüft und daher nicht geschrieben: %1</translation>
    </message>
    <message>
        <source>only the actions know which pages were to go</source>
        <translation>nur die Aktionen wissen, welche Seiten gehen sollten</translation>
    </message>
    <message>
        <source>it has %1 pages where %2 were written</source>
        <translation>es hat %1 Seiten, wo %2 geschrieben wurden</translation>
    </message>
    <message>
        <source>the program&apos;s part that verifies can&apos;t be loaded: %1</source>
        <translation>der Teil des Programms, der prüft, kann nicht geladen werden: %1</translation>
    </message>
    <message>
        <source>the program&apos;s part for windows can&apos;t be loaded: %1</source>
        <translation>der Teil des Programms für Fenster kann nicht geladen werden: %1</translation>
    </message>
    <message>
        <source>the PDF library can&apos;t be loaded</source>
        <translation>die PDF-Bibliothek kann nicht geladen werden</translation>
    </message>
    <message>
        <source>is larger than 2 GB; save it as a file and name that</source>
        <translation>ist größer als 2 GB; speichern Sie es als Datei, und nennen Sie diese</translation>
    </message>
    <message>
        <source>its owner does not permit reading it</source>
        <translation>sein Eigentümer erlaubt nicht, es zu lesen</translation>
    </message>
    <message>
        <source>its owner does not permit removing pages</source>
        <translation>sein Eigentümer erlaubt nicht, Seiten zu entfernen</translation>
    </message>
    <message>
        <source>its owner does not permit changing it</source>
        <translation>sein Eigentümer erlaubt nicht, es zu ändern</translation>
    </message>
    <message>
        <source>%1: the original can&apos;t be read</source>
        <translation>%1: das Original kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>is not a folder</source>
        <translation>ist kein Ordner</translation>
    </message>
    <message>
        <source>is not there</source>
        <translation>gibt es nicht</translation>
    </message>
    <message>
        <source>is an input of this run</source>
        <translation>ist eine Eingabe dieses Laufs</translation>
    </message>
    <message>
        <source>is where the output for %1 goes</source>
        <translation>ist da, wohin das Ergebnis für %1 kommt</translation>
    </message>
    <message>
        <source>line %1 is of a version that did not note what it had done</source>
        <translation>Zeile %1 ist von einer Version, die nicht festhielt, was sie getan hatte</translation>
    </message>
    <message>
        <source>line %1 is no report of a document</source>
        <translation>Zeile %1 ist kein Bericht über ein Dokument</translation>
    </message>
    <message>
        <source>the report exists already</source>
        <translation>den Bericht gibt es schon</translation>
    </message>
    <message>
        <source>is a device or pipe, not a report</source>
        <translation>ist ein Gerät oder eine Pipe, kein Bericht</translation>
    </message>
    <message>
        <source>is not a report, and so not replaced by one</source>
        <translation>ist kein Bericht und wird daher nicht durch einen ersetzt</translation>
    </message>
    <message>
        <source>name one of your own that nobody else may write to (chmod go-w)</source>
        <translation>nennen Sie einen eigenen, in den sonst niemand schreiben darf (chmod go-w)</translation>
    </message>
    <message>
        <source>run it in a desktop session, with DISPLAY or WAYLAND_DISPLAY set</source>
        <translation>führen Sie es in einer Desktop-Sitzung aus, mit DISPLAY oder WAYLAND_DISPLAY</translation>
    </message>
    <message>
        <source>the folder is not there any more; it is waited for</source>
        <translation>den Ordner gibt es nicht mehr; es wird auf ihn gewartet</translation>
    </message>
    <message>
        <source>the folder is there again</source>
        <translation>der Ordner ist wieder da</translation>
    </message>
    <message>
        <source>stays where it is, as it can&apos;t be moved to %1: that is another file system</source>
        <translation>bleibt, wo es ist, denn es kann nicht nach %1 verschoben werden: das ist ein anderes Dateisystem</translation>
    </message>
    <message>
        <source>stays where it is, as it can&apos;t be moved to %1: %2</source>
        <translation>bleibt, wo es ist, denn es kann nicht nach %1 verschoben werden: %2</translation>
    </message>
    <message>
        <source>stays where it is, as it was changed</source>
        <translation>bleibt, wo es ist, denn es wurde geändert</translation>
    </message>
    <message>
        <source>there is no such folder</source>
        <translation>den Ordner gibt es nicht</translation>
    </message>
    <message>
        <source>RC4 40 bits</source>
        <translation>RC4 mit 40 Bit</translation>
    </message>
    <message>
        <source>RC4 128 bits</source>
        <translation>RC4 mit 128 Bit</translation>
    </message>
    <message>
        <source>AES 128 bits</source>
        <translation>AES mit 128 Bit</translation>
    </message>
    <message>
        <source>AES 256 bits</source>
        <translation>AES mit 256 Bit</translation>
    </message>
    <message>
        <source>another handler</source>
        <translation>ein anderes Verfahren</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>printing</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>modifying</source>
        <translation>Ändern</translation>
    </message>
    <message>
        <source>copying</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>annotating</source>
        <translation>Kommentieren</translation>
    </message>
    <message>
        <source>form filling</source>
        <translation>Formulare ausfüllen</translation>
    </message>
    <message>
        <source>accessibility</source>
        <translation>Barrierefreiheit</translation>
    </message>
    <message>
        <source>assembling</source>
        <translation>Zusammenstellen</translation>
    </message>
    <message>
        <source>full-quality printing</source>
        <translation>Drucken in voller Güte</translation>
    </message>
    <message>
        <source>exit status %1</source>
        <translation>Rückgabewert %1</translation>
    </message>
    <message>
        <source>Killed</source>
        <translation>getötet</translation>
    </message>
    <message>
        <source>Terminated</source>
        <translation>beendet</translation>
    </message>
    <message>
        <source>Aborted</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>Segmentation fault</source>
        <translation>Speicherzugriffsfehler</translation>
    </message>
    <message>
        <source>Bus error</source>
        <translation>Busfehler</translation>
    </message>
    <message>
        <source>Illegal instruction</source>
        <translation>ungültige Anweisung</translation>
    </message>
    <message>
        <source>Floating point exception</source>
        <translation>Gleitkommafehler</translation>
    </message>
    <message>
        <source>Bad system call</source>
        <translation>unzulässiger Systemaufruf</translation>
    </message>
    <message>
        <source>No such file or directory</source>
        <translation>die Datei oder den Ordner gibt es nicht</translation>
    </message>
    <message>
        <source>Permission denied</source>
        <translation>keine Berechtigung</translation>
    </message>
    <message>
        <source>Operation not permitted</source>
        <translation>nicht erlaubt</translation>
    </message>
    <message>
        <source>No space left on device</source>
        <translation>kein Platz mehr auf dem Gerät</translation>
    </message>
    <message>
        <source>Is a directory</source>
        <translation>ist ein Ordner</translation>
    </message>
    <message>
        <source>Not a directory</source>
        <translation>ist kein Ordner</translation>
    </message>
    <message>
        <source>File exists</source>
        <translation>die Datei gibt es schon</translation>
    </message>
    <message>
        <source>Read-only file system</source>
        <translation>das Dateisystem kann nur gelesen werden</translation>
    </message>
    <message>
        <source>Input/output error</source>
        <translation>Ein-/Ausgabefehler</translation>
    </message>
    <message>
        <source>Disk quota exceeded</source>
        <translation>das zugeteilte Kontingent ist überschritten</translation>
    </message>
    <message>
        <source>Too many open files</source>
        <translation>zu viele offene Dateien</translation>
    </message>
    <message>
        <source>File name too long</source>
        <translation>der Name der Datei ist zu lang</translation>
    </message>
    <message>
        <source>Too many levels of symbolic links</source>
        <translation>zu viele symbolische Links hintereinander</translation>
    </message>
    <message>
        <source>Broken pipe</source>
        <translation>die Pipe ist unterbrochen</translation>
    </message>
    <message>
        <source>Cannot allocate memory</source>
        <translation>der Arbeitsspeicher reicht nicht</translation>
    </message>
    <message>
        <source>Invalid argument</source>
        <translation>ungültiges Argument</translation>
    </message>
    <message>
        <source>Resource temporarily unavailable</source>
        <translation>im Moment nicht verfügbar</translation>
    </message>
    <message>
        <source>No such device or address</source>
        <translation>kein solches Gerät</translation>
    </message>
    <message>
        <source>Text file busy</source>
        <translation>die Datei wird gerade ausgeführt</translation>
    </message>
    <message>
        <source>Connection reset by peer</source>
        <translation>die Verbindung wurde von der Gegenseite beendet</translation>
    </message>
    <message>
        <source>Invalid cross-device link</source>
        <translation>das ist ein anderes Dateisystem</translation>
    </message>
    <message>
        <source>Operation not supported</source>
        <translation>nicht unterstützt</translation>
    </message>
    <message>
        <source>Directory not empty</source>
        <translation>der Ordner ist nicht leer</translation>
    </message>
    <message>
        <source>repaired: %1 (and %2 more, see --json)</source>
        <translation>repariert: %1 (und %2 weitere, siehe --json)</translation>
    </message>
    <message>
        <source>repaired: %1</source>
        <translation>repariert: %1</translation>
    </message>
    <message>
        <source>lost of page %1: %2</source>
        <translation>verloren von Seite %1: %2</translation>
    </message>
    <message>
        <source>it cannot be read, and is left out, and perhaps others with it</source>
        <translation>sie kann nicht gelesen werden und wird ausgelassen, und vielleicht andere mit ihr</translation>
    </message>
    <message>
        <source>it cannot be read, and is left out</source>
        <translation>sie kann nicht gelesen werden und wird ausgelassen</translation>
    </message>
    <message>
        <source>content that cannot be read is missing</source>
        <translation>Inhalt, der nicht gelesen werden kann, fehlt</translation>
    </message>
    <message>
        <source>its content breaks off or cannot be decoded to its end, and is kept as it is</source>
        <translation>ihr Inhalt bricht ab oder kann nicht bis zum Ende dekodiert werden und bleibt, wie er ist</translation>
    </message>
    <message>
        <source>its page tree leads to what is no page, so that viewers may call page %1 by another number and another page be meant</source>
        <translation>sein Seitenbaum führt zu etwas, das keine Seite ist, sodass Anzeigeprogramme Seite %1 anders nummerieren können und eine andere Seite gemeint sein kann</translation>
    </message>
    <message>
        <source>its page tree leads to what is no page, so that viewers may call page %1 by another number</source>
        <translation>sein Seitenbaum führt zu etwas, das keine Seite ist, sodass Anzeigeprogramme Seite %1 anders nummerieren können</translation>
    </message>
    <message>
        <source>page %1, which cannot be read, was removed; viewers that leave it out give the pages behind it lower numbers</source>
        <translation>Seite %1, die nicht gelesen werden kann, wurde entfernt; Anzeigeprogramme, die sie auslassen, nummerieren die Seiten dahinter niedriger</translation>
    </message>
    <message>
        <source>page %1 and 1 other cannot be recovered</source>
        <translation>Seite %1 und eine weitere sind nicht zu retten</translation>
    </message>
    <message>
        <source>page %1 and %2 others cannot be recovered</source>
        <translation>Seite %1 und %2 weitere sind nicht zu retten</translation>
    </message>
    <message>
        <source>page %1 cannot be recovered</source>
        <translation>Seite %1 ist nicht zu retten</translation>
    </message>
    <message>
        <source>none of the pages that are left can be recovered</source>
        <translation>keine der Seiten, die bleiben, ist zu retten</translation>
    </message>
    <message>
        <source>the content of page %1 cannot be recovered</source>
        <translation>der Inhalt von Seite %1 ist nicht zu retten</translation>
    </message>
    <message>
        <source>page %1 cannot be read</source>
        <translation>Seite %1 kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>page %1 cannot be shown</source>
        <translation>Seite %1 kann nicht gezeigt werden</translation>
    </message>
    <message>
        <source>page %1 cannot be rendered</source>
        <translation>Seite %1 kann nicht gezeichnet werden</translation>
    </message>
    <message>
        <source>cannot be shown</source>
        <translation>kann nicht gezeigt werden</translation>
    </message>
    <message>
        <source>too large to be shown from memory</source>
        <translation>zu groß, um aus dem Arbeitsspeicher gezeigt zu werden</translation>
    </message>
    <message>
        <source>the document has no page tree</source>
        <translation>das Dokument hat keinen Seitenbaum</translation>
    </message>
    <message>
        <source>the document has no pages</source>
        <translation>das Dokument hat keine Seiten</translation>
    </message>
    <message>
        <source>damaged: its page tree lists the same pages again more often than a file of its size can mean</source>
        <translation>beschädigt: sein Seitenbaum nennt dieselben Seiten öfter, als eine Datei dieser Größe meinen kann</translation>
    </message>
    <message>
        <source>the page tree refers to one of its nodes twice</source>
        <translation>der Seitenbaum verweist auf einen seiner Knoten zweimal</translation>
    </message>
    <message>
        <source>the page tree has a node without children</source>
        <translation>der Seitenbaum hat einen Knoten ohne Kinder</translation>
    </message>
    <message>
        <source>the page tree has an entry that is no page; viewers may count one there</source>
        <translation>der Seitenbaum hat einen Eintrag, der keine Seite ist; Anzeigeprogramme zählen dort vielleicht eine</translation>
    </message>
    <message>
        <source>the page tree lists an object that is something else as a page</source>
        <translation>der Seitenbaum nennt ein Objekt, das etwas anderes ist, als Seite</translation>
    </message>
    <message>
        <source>the cross-reference table was rebuilt while the file was read</source>
        <translation>die Objekttabelle wurde neu aufgebaut, während die Datei gelesen wurde</translation>
    </message>
    <message>
        <source>not a PDF, or damaged beyond repair (%1)</source>
        <translation>kein PDF, oder so beschädigt, dass nichts zu retten ist (%1)</translation>
    </message>
    <message>
        <source>the password is missing or wrong</source>
        <translation>das Passwort fehlt oder ist falsch</translation>
    </message>
    <message>
        <source>damaged: it is encrypted, or was, but what says how is lost; an undamaged copy is needed</source>
        <translation>beschädigt: es ist oder war verschlüsselt, aber was sagt, wie, ist verloren; es braucht eine unbeschädigte Kopie</translation>
    </message>
    <message>
        <source>is encrypted in a way that is not supported (crypt filter %1)</source>
        <translation>ist auf eine Art verschlüsselt, die nicht unterstützt wird (Filter %1)</translation>
    </message>
    <message>
        <source>is encrypted in a way that is not supported (%1)</source>
        <translation>ist auf eine Art verschlüsselt, die nicht unterstützt wird (%1)</translation>
    </message>
    <message>
        <source>damaged: its cross-reference data have more entries than a file of its size can need</source>
        <translation>beschädigt: seine Objekttabelle hat mehr Einträge, als eine Datei dieser Größe brauchen kann</translation>
    </message>
    <message>
        <source>damaged: it speaks of object %1, but has only %2</source>
        <translation>beschädigt: es spricht von Objekt %1, hat aber nur %2</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>die Datei ist leer</translation>
    </message>
    <message>
        <source>the file cannot be read: %1</source>
        <translation>die Datei kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>the file became shorter while it was read</source>
        <translation>die Datei wurde kürzer, während sie gelesen wurde</translation>
    </message>
    <message>
        <source>the file was changed by another program while it was read</source>
        <translation>die Datei wurde von einem anderen Programm geändert, während sie gelesen wurde</translation>
    </message>
    <message>
        <source>is a folder</source>
        <translation>ist ein Ordner</translation>
    </message>
    <message>
        <source>is not a regular file</source>
        <translation>ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>the file exists</source>
        <translation>die Datei gibt es schon</translation>
    </message>
    <message>
        <source>its temporary file was moved or replaced by another program</source>
        <translation>seine temporäre Datei wurde von einem anderen Programm verschoben oder ersetzt</translation>
    </message>
    <message>
        <source>alternate presentations of the document, which may show removed pages, were removed</source>
        <translation>andere Darstellungen des Dokuments, die entfernte Seiten zeigen können, wurden entfernt</translation>
    </message>
    <message>
        <source>the form&apos;s XFA data was left as it is and may hold content of removed pages</source>
        <translation>die XFA-Daten des Formulars blieben, wie sie sind, und können Inhalt entfernter Seiten enthalten</translation>
    </message>
    <message>
        <source>the form&apos;s XFA data, which describes removed pages too, was removed; the form&apos;s fields on other pages stay</source>
        <translation>die XFA-Daten des Formulars, die auch entfernte Seiten beschreiben, wurden entfernt; die Felder des Formulars auf anderen Seiten bleiben</translation>
    </message>
    <message>
        <source>metadata of the document that cannot be read were removed, since they may show removed pages</source>
        <translation>Metadaten des Dokuments, die nicht gelesen werden können, wurden entfernt, da sie entfernte Seiten zeigen können</translation>
    </message>
    <message>
        <source>resources that removed pages share with others were kept, since it cannot be told what else uses them</source>
        <translation>Ressourcen, die entfernte Seiten mit anderen teilen, wurden behalten, da nicht zu sagen ist, was sie sonst benutzt</translation>
    </message>
    <message>
        <source>the signature in field &quot;%1&quot; no longer holds and was removed</source>
        <translation>die Signatur im Feld „%1“ gilt nicht mehr und wurde entfernt</translation>
    </message>
    <message>
        <source>the signature for the document&apos;s usage rights no longer holds and was removed</source>
        <translation>die Signatur für die Nutzungsrechte des Dokuments gilt nicht mehr und wurde entfernt</translation>
    </message>
    <message>
        <source>%1 of %2 pages went, but %3 % of the size stays, since something else holds what only they showed: %4</source>
        <translation>%1 von %2 Seiten gingen, aber %3 % der Größe bleiben, da etwas anderes hält, was nur sie zeigten: %4</translation>
    </message>
    <message>
        <source>not saved, since %1 still leads to a removed page</source>
        <translation>nicht gespeichert, da %1 noch zu einer entfernten Seite führt</translation>
    </message>
    <message>
        <source>the values of 1 form field that removed pages showed, too</source>
        <translation>der Wert eines Formularfeldes, das auch entfernte Seiten zeigten</translation>
    </message>
    <message>
        <source>the values of %1 form fields that removed pages showed, too</source>
        <translation>die Werte von %1 Formularfeldern, die auch entfernte Seiten zeigten</translation>
    </message>
    <message>
        <source>1 attached file</source>
        <translation>1 angehängte Datei</translation>
    </message>
    <message>
        <source>%1 attached files</source>
        <translation>%1 angehängte Dateien</translation>
    </message>
    <message>
        <source>the document&apos;s XMP metadata</source>
        <translation>die XMP-Metadaten des Dokuments</translation>
    </message>
    <message>
        <source>the document&apos;s information: %1</source>
        <translation>die Informationen des Dokuments: %1</translation>
    </message>
    <message>
        <source>1 script of the document</source>
        <translation>1 Skript des Dokuments</translation>
    </message>
    <message>
        <source>%1 scripts of the document</source>
        <translation>%1 Skripte des Dokuments</translation>
    </message>
    <message>
        <source>the titles of 1 article thread</source>
        <translation>der Titel eines Artikels</translation>
    </message>
    <message>
        <source>the titles of %1 article threads</source>
        <translation>die Titel von %1 Artikeln</translation>
    </message>
    <message>
        <source>no page would remain</source>
        <translation>keine Seite bliebe übrig</translation>
    </message>
    <message>
        <source>out of memory</source>
        <translation>der Arbeitsspeicher reicht nicht</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>der Arbeitsspeicher reicht nicht</translation>
    </message>
    <message>
        <source>a result is too large</source>
        <translation>ein Ergebnis ist zu groß</translation>
    </message>
    <message>
        <source>unknown failure</source>
        <translation>ein unbekannter Fehler</translation>
    </message>
    <message>
        <source>a stream cannot be decoded within reason</source>
        <translation>ein Datenstrom kann nicht mit vertretbarem Aufwand dekodiert werden</translation>
    </message>
    <message>
        <source>a stream is packed in an unusual way</source>
        <translation>ein Datenstrom ist auf ungewöhnliche Art gepackt</translation>
    </message>
    <message>
        <source>content that several pages share cannot be read</source>
        <translation>Inhalt, den sich mehrere Seiten teilen, kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>the source ends early</source>
        <translation>die Quelle endet zu früh</translation>
    </message>
    <message>
        <source>the document is too large to be linearised</source>
        <translation>das Dokument ist zu groß, um linearisiert zu werden</translation>
    </message>
    <message>
        <source>no reason given</source>
        <translation>ohne Angabe eines Grundes</translation>
    </message>
    <message>
        <source>%1 cannot be loaded: %2</source>
        <translation>%1 kann nicht geladen werden: %2</translation>
    </message>
    <message>
        <source>%1 of its streams can&apos;t be decoded, such as that in %2</source>
        <translation>%1 seiner Datenströme können nicht dekodiert werden, etwa der in %2</translation>
    </message>
    <message>
        <source>of some objects more revisions are left than are looked into</source>
        <translation>von manchen Objekten sind mehr Fassungen übrig, als angesehen werden</translation>
    </message>
    <message>
        <source>%1 objects that its table doesn&apos;t list can&apos;t be read, such as that at byte %2</source>
        <translation>%1 Objekte, die seine Tabelle nicht nennt, können nicht gelesen werden, etwa das bei Byte %2</translation>
    </message>
    <message>
        <source>the outline entry &quot;%1&quot; is gone or leads elsewhere</source>
        <translation>das Lesezeichen „%1“ ist weg oder führt anderswohin</translation>
    </message>
    <message>
        <source>the field &quot;%1&quot; is gone or has another value</source>
        <translation>das Feld „%1“ ist weg oder hat einen anderen Wert</translation>
    </message>
    <message>
        <source>the destination &quot;%1&quot; is gone or leads elsewhere</source>
        <translation>das Ziel „%1“ ist weg oder führt anderswohin</translation>
    </message>
    <message>
        <source>the attached file &quot;%1&quot; is gone</source>
        <translation>die angehängte Datei „%1“ ist weg</translation>
    </message>
    <message>
        <source>the information %1 is gone or has changed</source>
        <translation>die Information %1 ist weg oder hat sich geändert</translation>
    </message>
    <message>
        <source>the document&apos;s %1 is gone</source>
        <translation>%1 des Dokuments ist weg</translation>
    </message>
    <message>
        <source>the document is no longer encrypted</source>
        <translation>das Dokument ist nicht mehr verschlüsselt</translation>
    </message>
    <message>
        <source>the document is encrypted by other means</source>
        <translation>das Dokument ist anders verschlüsselt</translation>
    </message>
    <message>
        <source>the document permits more than before</source>
        <translation>das Dokument erlaubt mehr als vorher</translation>
    </message>
    <message>
        <source>the document opens without a password</source>
        <translation>das Dokument öffnet sich ohne Passwort</translation>
    </message>
    <message>
        <source>its boxes or its rotation have changed</source>
        <translation>ihre Rahmen oder ihre Drehung haben sich geändert</translation>
    </message>
    <message>
        <source>its label was &quot;%1&quot; and is &quot;%2&quot;</source>
        <translation>ihre Bezeichnung war „%1“ und ist „%2“</translation>
    </message>
    <message>
        <source>its content has changed</source>
        <translation>ihr Inhalt hat sich geändert</translation>
    </message>
    <message>
        <source>whether the content of page %1 is the same, which can&apos;t be decoded</source>
        <translation>ob der Inhalt von Seite %1 gleich ist, der nicht dekodiert werden kann</translation>
    </message>
    <message>
        <source>%1 links are gone or lead elsewhere</source>
        <translation>%1 Links sind weg oder führen anderswohin</translation>
    </message>
    <message>
        <source>%1 links lead to what is no page any more, or where none did</source>
        <translation>%1 Links führen zu etwas, das keine Seite mehr ist, oder dahin, wohin keiner führte</translation>
    </message>
    <message>
        <source>%1 annotations are gone or changed, such as &quot;%2&quot;</source>
        <translation>%1 Anmerkungen sind weg oder geändert, etwa „%2“</translation>
    </message>
    <message>
        <source>what pages show: poppler can&apos;t open one of the files, or counts its pages differently</source>
        <translation>was Seiten zeigen: poppler kann eine der Dateien nicht öffnen oder zählt ihre Seiten anders</translation>
    </message>
    <message>
        <source>what page %1 shows, which can&apos;t be rendered</source>
        <translation>was Seite %1 zeigt, die nicht gezeichnet werden kann</translation>
    </message>
    <message>
        <source>its text has changed</source>
        <translation>ihr Text hat sich geändert</translation>
    </message>
    <message>
        <source>it looks different</source>
        <translation>sie sieht anders aus</translation>
    </message>
    <message>
        <source>the file&apos;s bytes</source>
        <translation>die Bytes der Datei</translation>
    </message>
    <message>
        <source>texts and data of removed pages that are the document&apos;s or kept pages&apos; as well: %1</source>
        <translation>Texte und Daten entfernter Seiten, die auch das Dokument oder behaltene Seiten haben: %1</translation>
    </message>
    <message>
        <source>streams of removed pages that can&apos;t be decoded, and were looked for as they stand in the file: %1</source>
        <translation>Datenströme entfernter Seiten, die nicht dekodiert werden können und gesucht wurden, wie sie in der Datei stehen: %1</translation>
    </message>
    <message>
        <source>%1 texts begin like too many others to be looked for</source>
        <translation>%1 Texte beginnen wie zu viele andere, um gesucht zu werden</translation>
    </message>
    <message>
        <source>content that can&apos;t be decoded may use any of its page&apos;s resources</source>
        <translation>Inhalt, der nicht dekodiert werden kann, kann jede Ressource seiner Seite benutzen</translation>
    </message>
    <message>
        <source>%1 bytes that were in %2</source>
        <translation>%1 Bytes, die in %2 standen</translation>
    </message>
    <message>
        <source>the text of page %1 can&apos;t be read</source>
        <translation>der Text von Seite %1 kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>a page that the document doesn&apos;t list</source>
        <translation>eine Seite, die das Dokument nicht nennt</translation>
    </message>
    <message>
        <source>the document&apos;s names</source>
        <translation>die Namen des Dokuments</translation>
    </message>
    <message>
        <source>the page labels</source>
        <translation>die Seitenbezeichnungen</translation>
    </message>
    <message>
        <source>the page that stands for none is not blank</source>
        <translation>die Seite, die für keine steht, ist nicht leer</translation>
    </message>
    <message>
        <source>the document can&apos;t be verified: %1</source>
        <translation>das Dokument kann nicht geprüft werden: %1</translation>
    </message>
    <message>
        <source>it can&apos;t be verified: %1</source>
        <translation>es kann nicht geprüft werden: %1</translation>
    </message>
    <message>
        <source>can&apos;t be verified: its %1 pages are counted otherwise by libqpdf, which finds %2</source>
        <translation>kann nicht geprüft werden: seine %1 Seiten zählt libqpdf anders, das %2 findet</translation>
    </message>
    <message>
        <source>can&apos;t be verified: %1</source>
        <translation>kann nicht geprüft werden: %1</translation>
    </message>
    <message>
        <source>texts of removed pages: poppler can&apos;t open the document, or counts its pages differently</source>
        <translation>Texte entfernter Seiten: poppler kann das Dokument nicht öffnen oder zählt seine Seiten anders</translation>
    </message>
    <message>
        <source>the document should have %1 pages and has %2</source>
        <translation>das Dokument sollte %1 Seiten haben und hat %2</translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation>kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>cannot be read: %1</source>
        <translation>kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>is encrypted, and none of the passwords opens it</source>
        <translation>ist verschlüsselt, und keines der Passwörter öffnet es</translation>
    </message>
    <message>
        <source>the document cannot be read</source>
        <translation>das Dokument kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>the document cannot be read: %1</source>
        <translation>das Dokument kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>the document is encrypted and needs a password</source>
        <translation>das Dokument ist verschlüsselt und braucht ein Passwort</translation>
    </message>
    <message>
        <source>the document is encrypted, and none of the passwords opens it</source>
        <translation>das Dokument ist verschlüsselt, und keines der Passwörter öffnet es</translation>
    </message>
    <message>
        <source>%1 of page %2 in object %3: %4</source>
        <translation>%1 von Seite %2 in Objekt %3: %4</translation>
    </message>
    <message>
        <source>%1 of page %2: %3</source>
        <translation>%1 von Seite %2: %3</translation>
    </message>
    <message>
        <source>%1 in object %2: %3</source>
        <translation>%1 in Objekt %2: %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no command; name what to do: run, watch, pages, desktop, configure, info, verify, undo, config, actions, lists, favourites or settings</source>
        <translation>„%1“ ist kein Befehl; sagen Sie, was zu tun ist: run, watch, pages, desktop, configure, info, verify, undo, config, actions, lists, favourites oder settings</translation>
    </message>
    <message>
        <source>name what to do: run, watch, pages, desktop, configure, info, verify, undo, config, actions, lists, favourites or settings</source>
        <translation>sagen Sie, was zu tun ist: run, watch, pages, desktop, configure, info, verify, undo, config, actions, lists, favourites oder settings</translation>
    </message>
    <message>
        <source>there is no font to write it with; install one, such as those of the package fonts-dejavu-core</source>
        <translation>es gibt keine Schrift, um sie zu schreiben; installieren Sie eine, etwa die des Pakets fonts-dejavu-core</translation>
    </message>
    <message>
        <source>damaged: page %1 cannot be read</source>
        <translation>beschädigt: Seite %1 kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>1 further text</source>
        <translation>1 weiterer Text</translation>
    </message>
    <message>
        <source>%1 further texts</source>
        <translation>%1 weitere Texte</translation>
    </message>
    <message>
        <source>%1, 1 further text</source>
        <translation>%1, 1 weiterer Text</translation>
    </message>
    <message>
        <source>%1, %2 further texts</source>
        <translation>%1, %2 weitere Texte</translation>
    </message>
    <message>
        <source>an AES key of an unexpected length</source>
        <translation>ein AES-Schlüssel unerwarteter Länge</translation>
    </message>
    <message>
        <source>keys have more parts than any configuration needs: %1 dots stand before this one</source>
        <translation>Schlüssel haben mehr Teile, als eine Konfiguration braucht: vor diesem stehen %1 Punkte</translation>
    </message>
</context>
</TS>
