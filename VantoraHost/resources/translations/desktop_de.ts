<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>AboutWindow</name>
    <message>
        <source>About %1</source>
        <translation>Über %1</translation>
    </message>
    <message>
        <source>Removes pages from one document or from thousands, and leaves everything else of them as it was.

With Qt %1.
Licence: GPL, version 3 or later.</source>
        <translation>Entfernt Seiten aus einem Dokument oder aus Tausenden und lässt alles andere darin, wie es war.

Mit Qt %1.
Lizenz: GPL, Version 3 oder neuer.</translation>
    </message>
</context>
<context>
    <name>BringBack</name>
    <message>
        <source>bringing back the list</source>
        <translation>Liste zurückholen</translation>
    </message>
</context>
<context>
    <name>ChoiceRow</name>
    <message>
        <source>Which pages</source>
        <translation>Welche Seiten</translation>
    </message>
    <message>
        <source>What these pages have</source>
        <translation>Was diese Seiten haben</translation>
    </message>
    <message>
        <source>Size of the pages</source>
        <translation>Größe der Seiten</translation>
    </message>
    <message>
        <source>How many pages</source>
        <translation>Wie viele Seiten</translation>
    </message>
    <message>
        <source>How many pages, as a slider</source>
        <translation>Wie viele Seiten, als Schieberegler</translation>
    </message>
    <message>
        <source>from page</source>
        <translation>ab Seite</translation>
    </message>
    <message>
        <source>From which page on</source>
        <translation>Ab welcher Seite</translation>
    </message>
    <message>
        <source>From which page on, as a slider</source>
        <translation>Ab welcher Seite, als Schieberegler</translation>
    </message>
    <message>
        <source>noise of scanners counts</source>
        <translation>Scannerspuren zählen mit</translation>
    </message>
    <message>
        <source>Without this, dust, shadows along the edges and punch holes are nothing; with it, only pages of one colour are blank.</source>
        <translation>Sonst gelten Staub, Schatten an den Rändern und Lochungen als leer; so sind nur einfarbige Seiten leer.</translation>
    </message>
    <message>
        <source>−</source>
        <translation>−</translation>
    </message>
    <message>
        <source>Remove this choice</source>
        <translation>Diese Bedingung entfernen</translation>
    </message>
    <message>
        <source>What is wrong with this choice</source>
        <translation>Was an dieser Bedingung nicht stimmt</translation>
    </message>
</context>
<context>
    <name>ChoiceTexts</name>
    <message>
        <source>Blank</source>
        <translation>Leere Seiten</translation>
    </message>
    <message>
        <source>With the words</source>
        <translation>Mit den Wörtern</translation>
    </message>
    <message>
        <source>such as Draft; /expression/ for a regular one</source>
        <translation>z. B. Entwurf; /Ausdruck/ für einen regulären</translation>
    </message>
    <message>
        <source>Without any text</source>
        <translation>Ohne Text</translation>
    </message>
    <message>
        <source>Same as an earlier page</source>
        <translation>Wie eine frühere Seite</translation>
    </message>
    <message>
        <source>The first</source>
        <translation>Die ersten</translation>
    </message>
    <message>
        <source>The last</source>
        <translation>Die letzten</translation>
    </message>
    <message>
        <source>One of every</source>
        <translation>Eine von je</translation>
    </message>
    <message>
        <source>With odd numbers</source>
        <translation>Mit ungerader Nummer</translation>
    </message>
    <message>
        <source>With even numbers</source>
        <translation>Mit gerader Nummer</translation>
    </message>
    <message>
        <source>With the numbers</source>
        <translation>Mit den Nummern</translation>
    </message>
    <message>
        <source>such as 1,4-6,9-15</source>
        <translation>z. B. 1,4-6,9-15</translation>
    </message>
    <message>
        <source>With the labels</source>
        <translation>Mit den Seitenbezeichnungen</translation>
    </message>
    <message>
        <source>such as iv-x or A-3</source>
        <translation>z. B. iv-x oder A-3</translation>
    </message>
    <message>
        <source>Under the bookmark</source>
        <translation>Unter dem Lesezeichen</translation>
    </message>
    <message>
        <source>its title, such as Appendix</source>
        <translation>dessen Titel, z. B. Anhang</translation>
    </message>
    <message>
        <source>Of the size</source>
        <translation>Im Format</translation>
    </message>
    <message>
        <source>such as A4 or 210x297mm</source>
        <translation>z. B. A4 oder 210x297mm</translation>
    </message>
    <message>
        <source>Upright</source>
        <translation>Hochformat</translation>
    </message>
    <message>
        <source>Sideways</source>
        <translation>Querformat</translation>
    </message>
    <message>
        <source>In colour</source>
        <translation>In Farbe</translation>
    </message>
    <message>
        <source>Without colour</source>
        <translation>Ohne Farbe</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>a kind of choice and what it is about</comment>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>ChoosePane</name>
    <message>
        <source>What becomes of the pages that are chosen</source>
        <translation>Was mit den gefundenen Seiten geschieht</translation>
    </message>
    <message>
        <source>Remove these pages:</source>
        <translation>Diese Seiten entfernen:</translation>
    </message>
    <message>
        <source>Keep only these pages:</source>
        <translation>Nur diese Seiten behalten:</translation>
    </message>
    <message>
        <source>&amp;Include More…</source>
        <translation>&amp;Weitere einschließen…</translation>
    </message>
    <message>
        <source>Add another choice: pages that are any of them</source>
        <translation>Eine weitere Bedingung: Seiten, auf die eine davon zutrifft</translation>
    </message>
    <message>
        <source>E&amp;xclude…</source>
        <translation>Aussch&amp;ließen…</translation>
    </message>
    <message>
        <source>Add an exception: pages that are never removed</source>
        <translation>Eine Ausnahme: Seiten, die nie entfernt werden</translation>
    </message>
    <message>
        <source>Close, and leave the marks</source>
        <translation>Schließen; die Markierungen bleiben</translation>
    </message>
    <message>
        <source>What is found</source>
        <translation>Was gefunden wurde</translation>
    </message>
    <message>
        <source>Documents looked at</source>
        <translation>Durchsuchte Dokumente</translation>
    </message>
    <message>
        <source>Revie&amp;w</source>
        <translation>Dur&amp;chsehen</translation>
    </message>
    <message>
        <source>See all pages that go beside their neighbours, and rescue some</source>
        <translation>Alle zu entfernenden Seiten neben ihren Nachbarn ansehen und einzelne behalten</translation>
    </message>
    <message>
        <source>Documents that can&apos;t be judged, and why</source>
        <translation>Dokumente, die nicht beurteilt werden können, und warum</translation>
    </message>
</context>
<context>
    <name>DocumentCommands</name>
    <message numerus="yes">
        <source>adding %n document(s)</source>
        <translation>
            <numerusform>%n Dokument hinzufügen</numerusform>
            <numerusform>%n Dokumente hinzufügen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>removing %n document(s)</source>
        <translation>
            <numerusform>%n Dokument aus der Liste entfernen</numerusform>
            <numerusform>%n Dokumente aus der Liste entfernen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DocumentState</name>
    <message>
        <source>reading</source>
        <translation>wird gelesen</translation>
    </message>
    <message>
        <source>ready</source>
        <translation>bereit</translation>
    </message>
    <message>
        <source>locked</source>
        <translation>gesperrt</translation>
    </message>
    <message>
        <source>unreadable</source>
        <translation>nicht lesbar</translation>
    </message>
    <message>
        <source>done</source>
        <translation>fertig</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>fehlgeschlagen</translation>
    </message>
</context>
<context>
    <name>DocumentsPane</name>
    <message>
        <source>Filter by name</source>
        <translation>Nach Namen filtern</translation>
    </message>
    <message>
        <source>Filter documents by name</source>
        <translation>Dokumente nach Namen filtern</translation>
    </message>
    <message>
        <source>Filter documents by state</source>
        <translation>Dokumente nach Zustand filtern</translation>
    </message>
    <message>
        <source>Documents</source>
        <translation>Dokumente</translation>
    </message>
    <message>
        <source>Password of the document</source>
        <translation>Passwort des Dokuments</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>&amp;Unlock</source>
        <translation>&amp;Entsperren</translation>
    </message>
    <message>
        <source>Documents read</source>
        <translation>Gelesene Dokumente</translation>
    </message>
    <message>
        <source>S&amp;top</source>
        <translation>S&amp;toppen</translation>
    </message>
    <message>
        <source>Stop looking for documents in folders</source>
        <translation>Die Suche nach Dokumenten in Ordnern stoppen</translation>
    </message>
</context>
<context>
    <name>EmptyPage</name>
    <message>
        <source>Drop PDF files or folders here</source>
        <translation>PDF-Dateien oder Ordner hierher ziehen</translation>
    </message>
    <message>
        <source>Then mark the pages that go, see what that does to every document, and run it.
The files that you add are not changed unless you say so.</source>
        <translation>Markieren Sie dann die Seiten, die entfernt werden sollen, sehen Sie, was das in jedem Dokument bewirkt, und führen Sie es aus.
Die hinzugefügten Dateien bleiben unverändert, solange Sie es nicht anders wünschen.</translation>
    </message>
</context>
<context>
    <name>PageActions</name>
    <message>
        <source>Re&amp;move or Keep</source>
        <translation>Entfernen oder &amp;behalten</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>&amp;Keep</source>
        <translation>Be&amp;halten</translation>
    </message>
    <message>
        <source>Remove &amp;Odd Pages</source>
        <translation>&amp;Ungerade Seiten entfernen</translation>
    </message>
    <message>
        <source>Remove &amp;Even Pages</source>
        <translation>&amp;Gerade Seiten entfernen</translation>
    </message>
    <message>
        <source>Remove from &amp;Here to the End</source>
        <translation>Von hier bis zum En&amp;de entfernen</translation>
    </message>
    <message>
        <source>Remove from the &amp;Beginning to Here</source>
        <translation>Vom Anfang b&amp;is hier entfernen</translation>
    </message>
    <message>
        <source>&amp;Invert</source>
        <translation>Markierung um&amp;kehren</translation>
    </message>
    <message>
        <source>Keep &amp;All</source>
        <translation>&amp;Alle behalten</translation>
    </message>
    <message>
        <source>&amp;Select All Pages</source>
        <translation>Alle &amp;Seiten auswählen</translation>
    </message>
    <message>
        <source>Re&amp;view All Removed Pages</source>
        <translation>Alle ent&amp;fernten Seiten durchsehen</translation>
    </message>
    <message>
        <source>One Page at a &amp;Time</source>
        <translation>Einzelne Sei&amp;te</translation>
    </message>
    <message>
        <source>Current Page &amp;Large</source>
        <translation>Aktuelle Seite g&amp;roß</translation>
    </message>
    <message>
        <source>&amp;Go to Page...</source>
        <translation>Gehe &amp;zu Seite...</translation>
    </message>
    <message>
        <source>Review All</source>
        <translation>Alle durchsehen</translation>
    </message>
    <message>
        <source>Zoom I&amp;n</source>
        <translation>&amp;Vergrößern</translation>
    </message>
    <message>
        <source>Zoom O&amp;ut</source>
        <translation>Verk&amp;leinern</translation>
    </message>
    <message>
        <source>Dra&amp;w Again</source>
        <translation>&amp;Neu zeichnen</translation>
    </message>
</context>
<context>
    <name>PagesPaneForm</name>
    <message>
        <source>&amp;Pages to remove:</source>
        <translation>&amp;Zu entfernende Seiten:</translation>
    </message>
    <message>
        <source>such as 1,4-6,9-15</source>
        <translation>z. B. 1,4-6,9-15</translation>
    </message>
    <message>
        <source>&amp;Only here</source>
        <translation>&amp;nur hier</translation>
    </message>
    <message>
        <source>These pages go from this document only; the others keep to the pages for all.</source>
        <translation>Diese Seiten werden nur aus diesem Dokument entfernt; für die anderen gelten die Seiten für alle.</translation>
    </message>
    <message>
        <source>Pa&amp;ge:</source>
        <translation>&amp;Seite:</translation>
    </message>
    <message>
        <source>The number or the label of a page to go to</source>
        <translation>Nummer oder Bezeichnung der Seite, die gezeigt werden soll</translation>
    </message>
    <message>
        <source>Page to go to</source>
        <translation>Zu zeigende Seite</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Vergrößerung</translation>
    </message>
    <message>
        <source>Zoom, from small thumbnails to one page at a time</source>
        <translation>Vergrößerung, von kleinen Miniaturen bis zur einzelnen Seite</translation>
    </message>
</context>
<context>
    <name>ReportPage</name>
    <message>
        <source>page %1</source>
        <translation>Seite %1</translation>
    </message>
    <message>
        <source>No picture: %1.</source>
        <translation>Kein Bild: %1.</translation>
    </message>
    <message numerus="yes">
        <source>%n page(s) that went are not shown, so that this file stays small.</source>
        <translation>
            <numerusform>%n entfernte Seite ist nicht abgebildet, damit diese Datei klein bleibt.</numerusform>
            <numerusform>%n entfernte Seiten sind nicht abgebildet, damit diese Datei klein bleibt.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n page(s) removed</source>
        <translation>
            <numerusform>%n Seite entfernt</numerusform>
            <numerusform>%n Seiten entfernt</numerusform>
        </translation>
    </message>
    <message>
        <source>pages: %1</source>
        <translation>Seiten: %1</translation>
    </message>
    <message>
        <source>saved as %1</source>
        <translation>gespeichert als %1</translation>
    </message>
</context>
<context>
    <name>ResultsPane</name>
    <message>
        <source>&amp;Open</source>
        <translation>&amp;Öffnen</translation>
    </message>
    <message>
        <source>Show in Fol&amp;der</source>
        <translation>Im Ordner zei&amp;gen</translation>
    </message>
    <message>
        <source>Re&amp;try Failed</source>
        <translation>Fehlgeschlagene &amp;wiederholen</translation>
    </message>
    <message>
        <source>Run the Re&amp;st</source>
        <translation>Res&amp;t ausführen</translation>
    </message>
    <message>
        <source>&amp;Undo Run…</source>
        <translation>&amp;Lauf rückgängig machen…</translation>
    </message>
    <message>
        <source>Put the originals back, or remove the results; first it is said what that would do</source>
        <translation>Originale wiederherstellen oder Ergebnisse entfernen; vorher wird gesagt, was das bewirkt</translation>
    </message>
    <message>
        <source>&amp;Copy Command</source>
        <translation>Befehl &amp;kopieren</translation>
    </message>
    <message>
        <source>Copy the command of a terminal that does the same</source>
        <translation>Den Befehl für das Terminal kopieren, der dasselbe tut</translation>
    </message>
    <message>
        <source>Close Results</source>
        <translation>Ergebnisse schließen</translation>
    </message>
    <message>
        <source>What undoing the run does</source>
        <translation>Was das Rückgängigmachen bewirkt</translation>
    </message>
    <message>
        <source>Undo It Now</source>
        <translation>Jetzt rückgängig machen</translation>
    </message>
    <message>
        <source>Results of the run</source>
        <translation>Ergebnisse des Laufs</translation>
    </message>
    <message>
        <source>Save Report…</source>
        <translation>Bericht speichern…</translation>
    </message>
    <message>
        <source>Save what became of the documents, with pictures of the pages that went</source>
        <translation>Speichern, was aus den Dokumenten wurde, mit Bildern der entfernten Seiten</translation>
    </message>
    <message>
        <source>Keep What Can &amp;Be Kept</source>
        <translation>Retten, &amp;was zu retten ist</translation>
    </message>
    <message>
        <source>Do the damaged documents without what can&apos;t be read; it is said of each what it lost</source>
        <translation>Die beschädigten Dokumente ohne das bearbeiten, was nicht zu lesen ist; bei jedem wird gesagt, was ihm fehlt</translation>
    </message>
</context>
<context>
    <name>RunBar</name>
    <message>
        <source>&amp;Save</source>
        <translation>S&amp;peichern</translation>
    </message>
    <message>
        <source>Where results are saved</source>
        <translation>Wo Ergebnisse gespeichert werden</translation>
    </message>
    <message>
        <source>into a folder</source>
        <translation>in einem Ordner</translation>
    </message>
    <message>
        <source>beside each document</source>
        <translation>neben dem Dokument</translation>
    </message>
    <message>
        <source>in place of each document</source>
        <translation>anstelle des Dokuments</translation>
    </message>
    <message>
        <source>Folder for the results</source>
        <translation>Ordner für die Ergebnisse</translation>
    </message>
    <message>
        <source>&amp;Browse…</source>
        <translation>D&amp;urchsuchen…</translation>
    </message>
    <message>
        <source>&amp;named</source>
        <translation>Date&amp;iname</translation>
    </message>
    <message>
        <source>{name} stands for the document&apos;s name, {ext} for its extension with the dot, {number} for its number</source>
        <translation>{name} steht für den Namen des Dokuments, {ext} für seine Endung mit Punkt, {number} für seine Nummer</translation>
    </message>
    <message>
        <source>How results are named</source>
        <translation>Wie Ergebnisse heißen</translation>
    </message>
    <message>
        <source>&amp;keep the originals as NAME.pdf.bak</source>
        <translation>&amp;Originale als NAME.pdf.bak behalten</translation>
    </message>
    <message>
        <source>What happens where a file of the name exists</source>
        <translation>Was geschieht, wenn es eine Datei dieses Namens gibt</translation>
    </message>
    <message>
        <source>never replace files</source>
        <translation>nie ersetzen</translation>
    </message>
    <message>
        <source>replace files that exist</source>
        <translation>vorhandene ersetzen</translation>
    </message>
    <message>
        <source>keep both, with a number</source>
        <translation>beide behalten, mit Nr.</translation>
    </message>
    <message>
        <source>s&amp;kip signed</source>
        <translation>signierte &amp;verschonen</translation>
    </message>
    <message>
        <source>Leave documents alone that are signed; else they lose their signatures</source>
        <translation>Signierte Dokumente auslassen; sonst verlieren sie ihre Signaturen</translation>
    </message>
    <message>
        <source>What the run will do</source>
        <translation>Was der Lauf tun wird</translation>
    </message>
    <message>
        <source>Progress of the run</source>
        <translation>Fortschritt des Laufs</translation>
    </message>
    <message>
        <source>&amp;Run</source>
        <translation>Ausfüh&amp;ren</translation>
    </message>
    <message>
        <source>verif&amp;y</source>
        <translation>pr&amp;üfen</translation>
    </message>
    <message>
        <source>Verify results</source>
        <translation>Ergebnisse prüfen</translation>
    </message>
    <message>
        <source>Write a result only when it is verified that removed pages are gone and the rest is as it was; takes longer</source>
        <translation>Ein Ergebnis nur schreiben, wenn geprüft ist, dass die entfernten Seiten fort sind und alles andere ist wie zuvor; dauert länger</translation>
    </message>
</context>
<context>
    <name>RunOutlook</name>
    <message>
        <source>%1 will go from %2.</source>
        <comment>pages, documents</comment>
        <translation>Zu entfernen: %1 aus %2.</translation>
    </message>
    <message numerus="yes">
        <source>%n page(s)</source>
        <translation>
            <numerusform>%n Seite</numerusform>
            <numerusform>%n Seiten</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) that exist will be replaced.</source>
        <translation>
            <numerusform>%n vorhandene Datei wird ersetzt.</numerusform>
            <numerusform>%n vorhandene Dateien werden ersetzt.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) without marked pages stay as they are.</source>
        <translation>
            <numerusform>%n Dokument ohne markierte Seiten bleibt, wie es ist.</numerusform>
            <numerusform>%n Dokumente ohne markierte Seiten bleiben, wie sie sind.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) are done.</source>
        <translation>
            <numerusform>%n Dokument ist fertig.</numerusform>
            <numerusform>%n Dokumente sind fertig.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) that can&apos;t be read are left out.</source>
        <translation>
            <numerusform>%n Dokument, das nicht gelesen werden kann, wird ausgelassen.</numerusform>
            <numerusform>%n Dokumente, die nicht gelesen werden können, werden ausgelassen.</numerusform>
        </translation>
    </message>
    <message>
        <source>There is nothing to do yet.</source>
        <translation>Es gibt noch nichts zu tun.</translation>
    </message>
    <message numerus="yes">
        <source>%n document(s)</source>
        <comment>after: will go from</comment>
        <translation>
            <numerusform>%n Dokument</numerusform>
            <numerusform>%n Dokumenten</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) can&apos;t be written: %1.</source>
        <comment>the first reason</comment>
        <translation>
            <numerusform>%n Dokument kann nicht geschrieben werden: %1.</numerusform>
            <numerusform>%n Dokumente können nicht geschrieben werden: %1.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RunRemedy</name>
    <message>
        <source>put it back, or remove it from the list</source>
        <translation>legen Sie die Datei zurück, oder entfernen Sie sie aus der Liste</translation>
    </message>
    <message>
        <source>remove it from the list</source>
        <translation>entfernen Sie die Datei aus der Liste</translation>
    </message>
    <message>
        <source>save the result elsewhere, where a blank page is left</source>
        <translation>speichern Sie das Ergebnis an anderer Stelle, wo dann eine leere Seite bleibt</translation>
    </message>
    <message>
        <source>type its password below the list of documents</source>
        <translation>geben Sie das Passwort unter der Dokumentliste ein</translation>
    </message>
    <message>
        <source>its owner&apos;s password lifts that</source>
        <translation>mit dem Passwort des Eigentümers geht es</translation>
    </message>
    <message>
        <source>allow signed documents to be changed to go on without the signature</source>
        <translation>erlauben Sie, signierte Dokumente zu verändern, um ohne die Signatur fortzufahren</translation>
    </message>
    <message>
        <source>choose to replace it or to keep both, or name another folder</source>
        <translation>lassen Sie die Datei ersetzen oder beide behalten, oder nennen Sie einen anderen Ordner</translation>
    </message>
    <message>
        <source>choose another folder, or to change the documents in place</source>
        <translation>wählen Sie einen anderen Ordner, oder ändern Sie die Dokumente an Ort und Stelle</translation>
    </message>
    <message>
        <source>choose to keep both, or remove one from the list</source>
        <translation>lassen Sie beide behalten, oder entfernen Sie eines aus der Liste</translation>
    </message>
    <message>
        <source>choose another folder</source>
        <translation>wählen Sie einen anderen Ordner</translation>
    </message>
    <message>
        <source>close other programs, or divide the document first</source>
        <translation>schließen Sie andere Programme, oder teilen Sie das Dokument vorher</translation>
    </message>
    <message>
        <source>the document may be damaged; get another copy of it</source>
        <translation>das Dokument ist vielleicht beschädigt; besorgen Sie eine andere Kopie davon</translation>
    </message>
    <message>
        <source>something else ended the process; run it again</source>
        <translation>etwas anderes hat den Prozess beendet; führen Sie es noch einmal aus</translation>
    </message>
    <message>
        <source>save it anew</source>
        <translation>speichern Sie es neu</translation>
    </message>
    <message>
        <source>%1; %2</source>
        <comment>what is wrong, what to do</comment>
        <translation>%1; %2</translation>
    </message>
    <message>
        <source>it is written when results are not verified; look at it</source>
        <translation>ohne Prüfung der Ergebnisse wird es geschrieben; sehen Sie es sich an</translation>
    </message>
</context>
<context>
    <name>SequencePane</name>
    <message>
        <source>&amp;Add Step</source>
        <translation>Schritt hinzu&amp;fügen</translation>
    </message>
    <message>
        <source>Add a step: one of the installed actions</source>
        <translation>Einen Schritt hinzufügen: eine der installierten Aktionen</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Gespeichert</translation>
    </message>
    <message>
        <source>Load saved steps, or save these</source>
        <translation>Gespeicherte Schritte laden oder diese speichern</translation>
    </message>
    <message>
        <source>Steps of the run</source>
        <translation>Schritte des Laufs</translation>
    </message>
    <message>
        <source>Configure…</source>
        <translation>Konfigurieren…</translation>
    </message>
    <message>
        <source>Move the step up</source>
        <translation>Schritt nach oben</translation>
    </message>
    <message>
        <source>Move the step down</source>
        <translation>Schritt nach unten</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>&amp;List</source>
        <translation>&amp;Liste</translation>
    </message>
    <message>
        <source>Categor&amp;y</source>
        <translation>&amp;Kategorie</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>ShownTexts</name>
    <message numerus="yes">
        <source>%n byte(s)</source>
        <translation>
            <numerusform>%n Byte</numerusform>
            <numerusform>%n Byte</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::ChoiceRow</name>
    <message>
        <source>Choose what pages…</source>
        <translation>Bedingung wählen…</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::ChoosePane</name>
    <message>
        <source>but not</source>
        <translation>aber nicht</translation>
    </message>
    <message>
        <source>or</source>
        <translation>oder</translation>
    </message>
    <message>
        <source>Nothing is looked for until that is right.</source>
        <translation>Gesucht wird erst, wenn das stimmt.</translation>
    </message>
    <message>
        <source>What is found is marked at once, in each document only there.</source>
        <translation>Was gefunden wird, wird sofort markiert, in jedem Dokument nur dort.</translation>
    </message>
    <message>
        <source>%1 in %2</source>
        <comment>pages and documents</comment>
        <translation>%1 in %2</translation>
    </message>
    <message numerus="yes">
        <source>%n page(s)</source>
        <translation>
            <numerusform>%n Seite</numerusform>
            <numerusform>%n Seiten</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s)</source>
        <translation>
            <numerusform>%n Dokument</numerusform>
            <numerusform>%n Dokumenten</numerusform>
        </translation>
    </message>
    <message>
        <source>Nothing is found.</source>
        <translation>Nichts gefunden.</translation>
    </message>
    <message>
        <source>Found: %1.</source>
        <translation>Gefunden: %1.</translation>
    </message>
    <message>
        <source>Stopped: %1; looked at %2 of %3.</source>
        <translation>Gestoppt: %1; %2 von %3 durchsucht.</translation>
    </message>
    <message>
        <source>Looking: %1; looked at %2 of %3.</source>
        <translation>Suche läuft: %1; %2 von %3 durchsucht.</translation>
    </message>
    <message>
        <source>S&amp;top Looking</source>
        <translation>Suche s&amp;toppen</translation>
    </message>
    <message>
        <source>Con&amp;tinue</source>
        <translation>For&amp;tsetzen</translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) can&apos;t be judged and keep the marks that they had:</source>
        <translation>
            <numerusform>%n Dokument kann nicht beurteilt werden und behält seine Markierungen:</numerusform>
            <numerusform>%n Dokumente können nicht beurteilt werden und behalten ihre Markierungen:</numerusform>
        </translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>a document and a sentence</comment>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::Chooser</name>
    <message>
        <source>Choose Pages</source>
        <translation>Seiten auswählen</translation>
    </message>
    <message>
        <source>same as page %1</source>
        <translation>wie Seite %1</translation>
    </message>
    <message>
        <source>%1: %2 % of it differs from the paper</source>
        <comment>a choice and a share</comment>
        <translation>%1: %2 % davon heben sich vom Papier ab</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::DocumentList</name>
    <message>
        <source>%1: %2</source>
        <comment>a state and its reason</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>How many of its pages are going to go</source>
        <translation>Wie viele seiner Seiten entfernt werden</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Go</source>
        <translation>Entf.</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::DocumentsController</name>
    <message>
        <source>The folder %1 can&apos;t be read.</source>
        <translation>Der Ordner %1 kann nicht gelesen werden.</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::DocumentsPane</name>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message>
        <source>Locked</source>
        <translation>Gesperrt</translation>
    </message>
    <message>
        <source>In trouble</source>
        <translation>Mit Problemen</translation>
    </message>
    <message>
        <source>This password does not open %1.</source>
        <translation>Dieses Passwort öffnet %1 nicht.</translation>
    </message>
    <message numerus="yes">
        <source>Looking for documents: %n found</source>
        <translation>
            <numerusform>Suche nach Dokumenten: %n gefunden</numerusform>
            <numerusform>Suche nach Dokumenten: %n gefunden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Reading: %n document(s) left</source>
        <translation>
            <numerusform>Lesen: noch %n Dokument</numerusform>
            <numerusform>Lesen: noch %n Dokumente</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s)</source>
        <translation>
            <numerusform>%n Dokument</numerusform>
            <numerusform>%n Dokumente</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is locked. Its password is tried on the other locked documents, too, and is never saved.</source>
        <translation>%1 ist gesperrt. Das Passwort wird auch an den anderen gesperrten Dokumenten versucht und nie gespeichert.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>a document and what is wrong with it</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Trying the password…</source>
        <translation>Das Passwort wird versucht…</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::FavouriteBar</name>
    <message>
        <source>Favourites of this action, the newest first</source>
        <translation>Favoriten dieser Aktion, die neuesten zuerst</translation>
    </message>
    <message>
        <source>Newer favourite</source>
        <translation>Neuerer Favorit</translation>
    </message>
    <message>
        <source>Older favourite</source>
        <translation>Älterer Favorit</translation>
    </message>
    <message>
        <source>Favourites</source>
        <translation>Favoriten</translation>
    </message>
    <message>
        <source>Favourite: %1</source>
        <translation>Favorit: %1</translation>
    </message>
    <message>
        <source>No favourite of this action is saved; its options have a button for it.</source>
        <translation>Zu dieser Aktion ist kein Favorit gespeichert; ihre Optionen haben eine Schaltfläche dafür.</translation>
    </message>
    <message>
        <source>There is no older favourite.</source>
        <translation>Es gibt keinen älteren Favoriten.</translation>
    </message>
    <message>
        <source>There is no newer favourite.</source>
        <translation>Es gibt keinen neueren Favoriten.</translation>
    </message>
    <message>
        <source>None is saved</source>
        <translation>Keiner gespeichert</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::HelpPane</name>
    <message>
        <source>Help of the action</source>
        <translation>Hilfe zur Aktion</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::LeftBehind</name>
    <message>
        <source>What was kept of a window can&apos;t be brought back: %1: %2.</source>
        <comment>a file and what is wrong with it</comment>
        <translation>Was von einem Fenster aufgehoben wurde, lässt sich nicht zurückholen: %1: %2.</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::MainWindow</name>
    <message>
        <source>Documents</source>
        <translation>Dokumente</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Steps</source>
        <translation>Schritte</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>A run is going on.</source>
        <translation>Ein Lauf ist im Gange.</translation>
    </message>
    <message>
        <source>Stop It and &amp;Close</source>
        <translation>Stoppen und schli&amp;eßen</translation>
    </message>
    <message>
        <source>Go &amp;On</source>
        <translation>Weiterla&amp;ufen lassen</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>Past R&amp;uns</source>
        <translation>&amp;Frühere Läufe</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Mark</source>
        <translation>&amp;Markieren</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message numerus="yes">
        <source>%n document(s)</source>
        <translation>
            <numerusform>%n Dokument</numerusform>
            <numerusform>%n Dokumente</numerusform>
        </translation>
    </message>
    <message>
        <source>None yet</source>
        <translation>Noch keine</translation>
    </message>
    <message>
        <source>Add a Folder</source>
        <translation>Ordner hinzufügen</translation>
    </message>
    <message>
        <source>Add Files</source>
        <translation>Dateien hinzufügen</translation>
    </message>
    <message>
        <source>PDF files (*.pdf *.PDF)</source>
        <translation>PDF-Dateien (*.pdf *.PDF)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Save Pages</source>
        <translation>Seiten speichern</translation>
    </message>
    <message>
        <source>Load Pages</source>
        <translation>Seiten laden</translation>
    </message>
    <message>
        <source>Lists of pages (*.tsv *.csv *.txt)</source>
        <translation>Seitenlisten (*.tsv *.csv *.txt)</translation>
    </message>
    <message>
        <source>This run can&apos;t be undone later: %1.</source>
        <comment>a reason</comment>
        <translation>Dieser Lauf kann später nicht rückgängig gemacht werden: %1.</translation>
    </message>
    <message>
        <source>The run was stopped</source>
        <translation>Der Lauf wurde gestoppt</translation>
    </message>
    <message>
        <source>The run is over</source>
        <translation>Der Lauf ist beendet</translation>
    </message>
    <message>
        <source>pages.tsv</source>
        <comment>a file&apos;s name that is proposed</comment>
        <translation>Seiten.tsv</translation>
    </message>
    <message>
        <source>Save Report</source>
        <translation>Bericht speichern</translation>
    </message>
    <message>
        <source>report</source>
        <comment>a file&apos;s name</comment>
        <translation>Bericht</translation>
    </message>
    <message>
        <source>Web page with pictures (*.html)</source>
        <translation>Webseite mit Bildern (*.html)</translation>
    </message>
    <message>
        <source>Lines of JSON (*.jsonl)</source>
        <translation>JSON-Zeilen (*.jsonl)</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::PageDelegate</name>
    <message>
        <source>%1 · %2</source>
        <comment>page number and label</comment>
        <translation>%1 · %2</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::PageGridModel</name>
    <message>
        <source>page %1, will be removed</source>
        <translation>Seite %1, wird entfernt</translation>
    </message>
    <message>
        <source>page %1, stays</source>
        <translation>Seite %1, bleibt</translation>
    </message>
    <message>
        <source>page %1, %2, will be removed</source>
        <translation>Seite %1, %2, wird entfernt</translation>
    </message>
    <message>
        <source>page %1, %2, stays</source>
        <translation>Seite %1, %2, bleibt</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>what becomes of a page, and why</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>a document&apos;s name and one of its pages</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1; it can&apos;t be shown: %2</source>
        <comment>a page and a reason</comment>
        <translation>%1; kann nicht angezeigt werden: %2</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::PagesPane</name>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Rescue or Remove</source>
        <translation>Behalten oder entfernen</translation>
    </message>
    <message>
        <source>Type Pages</source>
        <translation>Seiten eingeben</translation>
    </message>
    <message>
        <source>Only Here</source>
        <translation>Nur hier</translation>
    </message>
    <message>
        <source>As in All Documents</source>
        <translation>Wie in allen Dokumenten</translation>
    </message>
    <message>
        <source>No page goes from any document. Type above which pages to remove, or mark them in a document.</source>
        <translation>Aus keinem Dokument wird eine Seite entfernt. Geben Sie oben die Seiten ein, oder markieren Sie sie in einem Dokument.</translation>
    </message>
    <message>
        <source>Choose a document to see its pages.</source>
        <translation>Wählen Sie ein Dokument, um seine Seiten zu sehen.</translation>
    </message>
    <message>
        <source>Reading %1...</source>
        <translation>%1 wird gelesen...</translation>
    </message>
    <message>
        <source>%1 can&apos;t be shown: %2</source>
        <comment>a document and a reason</comment>
        <translation>%1 kann nicht angezeigt werden: %2</translation>
    </message>
    <message numerus="yes">
        <source>of %n</source>
        <comment>pages</comment>
        <translation>
            <numerusform>von %n</numerusform>
            <numerusform>von %n</numerusform>
        </translation>
    </message>
    <message>
        <source>This range %1.</source>
        <comment>what is wrong with it</comment>
        <translation>Dieser Bereich %1.</translation>
    </message>
    <message numerus="yes">
        <source>%n page(s) will be removed</source>
        <translation>
            <numerusform>%n Seite wird entfernt</numerusform>
            <numerusform>%n Seiten werden entfernt</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 from %2</source>
        <comment>pages and documents</comment>
        <translation>%1, aus %2</translation>
    </message>
    <message numerus="yes">
        <source>%n document(s)</source>
        <comment>after: removed from</comment>
        <translation>
            <numerusform>%n Dokument</numerusform>
            <numerusform>%n Dokumenten</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::RangesFiles</name>
    <message>
        <source>%1: %2.</source>
        <comment>a file and what is wrong with it</comment>
        <translation>%1: %2.</translation>
    </message>
    <message>
        <source>Load Pages</source>
        <translation>Seiten laden</translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) have their pages from the list</source>
        <translation>
            <numerusform>%n Dokument hat seine Seiten aus der Liste</numerusform>
            <numerusform>%n Dokumente haben ihre Seiten aus der Liste</numerusform>
        </translation>
    </message>
    <message>
        <source>%1; %2.</source>
        <comment>loaded, and not named</comment>
        <translation>%1; %2.</translation>
    </message>
    <message numerus="yes">
        <source>%n that it doesn&apos;t name stay as they were</source>
        <translation>
            <numerusform>%n, das sie nicht nennt, bleibt, wie es war</numerusform>
            <numerusform>%n, die sie nicht nennt, bleiben, wie sie waren</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The pages of %n document(s) are saved as %1.</source>
        <translation>
            <numerusform>Die Seiten von %n Dokument sind als %1 gespeichert.</numerusform>
            <numerusform>Die Seiten von %n Dokumenten sind als %1 gespeichert.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::RecentMenu</name>
    <message>
        <source>Nothing was opened yet</source>
        <translation>Noch nichts geöffnet</translation>
    </message>
    <message>
        <source>&amp;Forget These</source>
        <translation>Liste &amp;leeren</translation>
    </message>
    <message>
        <source>Open Re&amp;cent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::RecoveryBar</name>
    <message numerus="yes">
        <source>A window was cut off with %n document(s) in its list. They can be brought back, with the pages that go and the steps.</source>
        <translation>
            <numerusform>Ein Fenster mit %n Dokument in der Liste endete unerwartet. Es lässt sich zurückholen, mit den zu entfernenden Seiten und den Schritten.</numerusform>
            <numerusform>Ein Fenster mit %n Dokumenten in der Liste endete unerwartet. Sie lassen sich zurückholen, mit den zu entfernenden Seiten und den Schritten.</numerusform>
        </translation>
    </message>
    <message>
        <source>A run was going on; whether to go on with it is asked afterwards.</source>
        <translation>Ein Lauf war im Gange; ob er fortgesetzt werden soll, wird danach gefragt.</translation>
    </message>
    <message>
        <source>Br&amp;ing Back</source>
        <translation>Zurüc&amp;kholen</translation>
    </message>
    <message>
        <source>Add them to the list; nothing is run</source>
        <translation>Zur Liste hinzufügen; ausgeführt wird nichts</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>Ver&amp;werfen</translation>
    </message>
    <message>
        <source>Forget that list; no document is touched</source>
        <translation>Diese Liste vergessen; kein Dokument wird angerührt</translation>
    </message>
    <message>
        <source>Go On w&amp;ith It</source>
        <translation>For&amp;tsetzen</translation>
    </message>
    <message>
        <source>Run what is left, with the settings below</source>
        <translation>Ausführen, was übrig ist, mit den Einstellungen unten</translation>
    </message>
    <message>
        <source>Not No&amp;w</source>
        <translation>&amp;Jetzt nicht</translation>
    </message>
    <message>
        <source>Leave everything as it is</source>
        <translation>Alles lassen, wie es ist</translation>
    </message>
    <message>
        <source>The run of %1 was cut off after %2 of %3. %4</source>
        <comment>a time, documents done, documents of the run, what running the rest would do</comment>
        <translation>Der Lauf vom %1 brach nach %2 von %3 ab. %4</translation>
    </message>
    <message numerus="yes">
        <source>%n document(s)</source>
        <translation>
            <numerusform>%n Dokument</numerusform>
            <numerusform>%n Dokumente</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::ReportSaver</name>
    <message>
        <source>The report is being saved: %1 of %2</source>
        <comment>pictures</comment>
        <translation>Der Bericht wird gespeichert: %1 von %2</translation>
    </message>
    <message numerus="yes">
        <source>%n picture(s)</source>
        <translation>
            <numerusform>%n Bild</numerusform>
            <numerusform>%n Bildern</numerusform>
        </translation>
    </message>
    <message>
        <source>the original is not there any more as it was</source>
        <translation>das Original gibt es nicht mehr, wie es war</translation>
    </message>
    <message>
        <source>The report is saved as %1.</source>
        <translation>Der Bericht ist als %1 gespeichert.</translation>
    </message>
    <message>
        <source>The report is not saved: %1: %2.</source>
        <comment>a file and what is wrong with it</comment>
        <translation>Der Bericht ist nicht gespeichert: %1: %2.</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::ResultList</name>
    <message>
        <source>undone: the original is put back</source>
        <translation>rückgängig gemacht: Original wiederhergestellt</translation>
    </message>
    <message>
        <source>undone: the result is removed</source>
        <translation>rückgängig gemacht: Ergebnis entfernt</translation>
    </message>
    <message>
        <source>undone already</source>
        <translation>bereits rückgängig gemacht</translation>
    </message>
    <message>
        <source>left alone: %1</source>
        <translation>nicht angerührt: %1</translation>
    </message>
    <message>
        <source>left alone</source>
        <translation>nicht angerührt</translation>
    </message>
    <message>
        <source>failed: %1</source>
        <translation>fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>%1; %2</source>
        <comment>done or left out, and a warning</comment>
        <translation>%1; %2</translation>
    </message>
    <message>
        <source>done</source>
        <translation>fertig</translation>
    </message>
    <message>
        <source>left out</source>
        <translation>ausgelassen</translation>
    </message>
    <message>
        <source>%1 → %2</source>
        <comment>before and after</comment>
        <translation>%1 → %2</translation>
    </message>
    <message>
        <source>Document</source>
        <translation>Dokument</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Saved as</source>
        <translation>Gespeichert als</translation>
    </message>
    <message>
        <source>done; lost of page %1: %2</source>
        <comment>a page&apos;s number, what is missing</comment>
        <translation>fertig; von Seite %1 verloren: %2</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::ResultsPane</name>
    <message>
        <source>&amp;Leave It</source>
        <translation>&amp;Jetzt nicht</translation>
    </message>
    <message>
        <source>C&amp;lose</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Undoing: %1 of %2</source>
        <comment>documents</comment>
        <translation>Wird rückgängig gemacht: %1 von %2</translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) done</source>
        <translation>
            <numerusform>%n Dokument fertig</numerusform>
            <numerusform>%n Dokumente fertig</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <comment>documents done</comment>
        <translation>%1/%2</translation>
    </message>
    <message numerus="yes">
        <source>%n failed</source>
        <translation>
            <numerusform>%n fehlgeschlagen</numerusform>
            <numerusform>%n fehlgeschlagen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n page(s) removed</source>
        <translation>
            <numerusform>%n Seite entfernt</numerusform>
            <numerusform>%n Seiten entfernt</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 before, %2 after</source>
        <comment>sizes</comment>
        <translation>vorher %1, nachher %2</translation>
    </message>
    <message>
        <source>Stopped: %1. Nothing is half-written.</source>
        <translation>Gestoppt: %1. Nichts ist halb geschrieben.</translation>
    </message>
    <message>
        <source>%1. The run could not go on: %2</source>
        <translation>%1. Der Lauf konnte nicht fortgesetzt werden: %2</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::RunBar</name>
    <message>
        <source>Folder for the Results</source>
        <translation>Ordner für die Ergebnisse</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <comment>documents done</comment>
        <translation>%1 von %2</translation>
    </message>
    <message numerus="yes">
        <source>%n document(s)</source>
        <translation>
            <numerusform>%n Dokument</numerusform>
            <numerusform>%n Dokumenten</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n failed</source>
        <translation>
            <numerusform>%n fehlgeschlagen</numerusform>
            <numerusform>%n fehlgeschlagen</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 a second</source>
        <translation>%1 je Sekunde</translation>
    </message>
    <message>
        <source>%1 left</source>
        <translation>noch %1</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::SequencePane</name>
    <message>
        <source>the favourite %1</source>
        <translation>Favorit %1</translation>
    </message>
    <message>
        <source>adding %1</source>
        <translation>%1 hinzufügen</translation>
    </message>
    <message>
        <source>No action is installed</source>
        <translation>Keine Aktion installiert</translation>
    </message>
    <message>
        <source>Action lists</source>
        <translation>Aktionslisten</translation>
    </message>
    <message>
        <source>Favourites</source>
        <translation>Favoriten</translation>
    </message>
    <message>
        <source>&amp;Save as Action List…</source>
        <translation>Als Aktionsliste &amp;speichern…</translation>
    </message>
    <message>
        <source>&amp;Load Tool Settings…</source>
        <translation>Werkzeugeinstellungen &amp;laden…</translation>
    </message>
    <message>
        <source>Save &amp;Tool Settings…</source>
        <translation>&amp;Werkzeugeinstellungen speichern…</translation>
    </message>
    <message>
        <source>loading %1</source>
        <translation>%1 laden</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>a file&apos;s name and what is wrong with it</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Saved in “%1”.</source>
        <translation>In „%1“ gespeichert.</translation>
    </message>
    <message>
        <source>Save Tool Settings</source>
        <translation>Werkzeugeinstellungen speichern</translation>
    </message>
    <message>
        <source>Load Tool Settings</source>
        <translation>Werkzeugeinstellungen laden</translation>
    </message>
    <message>
        <source>Tool settings files (*.tsf)</source>
        <translation>Werkzeugeinstellungen (*.tsf)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>options of %1</source>
        <translation>Optionen von %1</translation>
    </message>
    <message>
        <source>moving a step</source>
        <translation>Schritt verschieben</translation>
    </message>
    <message>
        <source>removing %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message>
        <source>There is a list of this name; name it otherwise.</source>
        <translation>Eine Liste dieses Namens gibt es schon; wählen Sie einen anderen.</translation>
    </message>
    <message>
        <source>Saved as the action list “%1”.</source>
        <translation>Als Aktionsliste „%1“ gespeichert.</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::StepList</name>
    <message>
        <source>%1: %2</source>
        <comment>an action and its pages</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Removes the pages that are marked</source>
        <translation>Entfernt die markierten Seiten</translation>
    </message>
    <message>
        <source>switching on %1</source>
        <translation>%1 einschalten</translation>
    </message>
    <message>
        <source>switching off %1</source>
        <translation>%1 ausschalten</translation>
    </message>
    <message>
        <source>moving a step</source>
        <translation>Schritt verschieben</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::UndoController</name>
    <message>
        <source>%1: %2.</source>
        <comment>a file and what is wrong with it</comment>
        <translation>%1: %2.</translation>
    </message>
    <message numerus="yes">
        <source>%n original(s) put back</source>
        <translation>
            <numerusform>%n Original wiederhergestellt</numerusform>
            <numerusform>%n Originale wiederhergestellt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n result(s) removed</source>
        <translation>
            <numerusform>%n Ergebnis entfernt</numerusform>
            <numerusform>%n Ergebnisse entfernt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n undone already</source>
        <translation>
            <numerusform>%n bereits rückgängig gemacht</numerusform>
            <numerusform>%n bereits rückgängig gemacht</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n left alone</source>
        <translation>
            <numerusform>%n nicht angerührt</numerusform>
            <numerusform>%n nicht angerührt</numerusform>
        </translation>
    </message>
    <message>
        <source>This run has written nothing.</source>
        <translation>Dieser Lauf hat nichts geschrieben.</translation>
    </message>
    <message>
        <source>Nothing to undo: %1.</source>
        <translation>Nichts rückgängig zu machen: %1.</translation>
    </message>
    <message>
        <source>Undo this run? %1.</source>
        <comment>counts</comment>
        <translation>Diesen Lauf rückgängig machen? Das bewirkt: %1.</translation>
    </message>
    <message>
        <source>Undone: %1.</source>
        <comment>counts</comment>
        <translation>Rückgängig gemacht: %1.</translation>
    </message>
    <message numerus="yes">
        <source>%n original(s) will be put back</source>
        <translation>
            <numerusform>%n Original wird wiederhergestellt</numerusform>
            <numerusform>%n Originale werden wiederhergestellt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n result(s) will be removed</source>
        <translation>
            <numerusform>%n Ergebnis wird entfernt</numerusform>
            <numerusform>%n Ergebnisse werden entfernt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n will be left alone</source>
        <translation>
            <numerusform>%n wird nicht angerührt</numerusform>
            <numerusform>%n werden nicht angerührt</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::WindowActions</name>
    <message>
        <source>Show or hide this part</source>
        <translation>Diesen Bereich zeigen oder verbergen</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>Wieder&amp;herstellen</translation>
    </message>
    <message>
        <source>Add &amp;Files…</source>
        <translation>Date&amp;ien hinzufügen…</translation>
    </message>
    <message>
        <source>Add PDF files to the list</source>
        <translation>PDF-Dateien zur Liste hinzufügen</translation>
    </message>
    <message>
        <source>Add Fol&amp;der…</source>
        <translation>&amp;Ordner hinzufügen…</translation>
    </message>
    <message>
        <source>Add the PDF files in a folder and its subfolders</source>
        <translation>Die PDF-Dateien in einem Ordner und seinen Unterordnern hinzufügen</translation>
    </message>
    <message>
        <source>Re&amp;move from List</source>
        <translation>Aus der &amp;Liste entfernen</translation>
    </message>
    <message>
        <source>Remove the selected documents from the list; the files stay</source>
        <translation>Die gewählten Dokumente aus der Liste entfernen; die Dateien bleiben</translation>
    </message>
    <message>
        <source>Read A&amp;gain</source>
        <translation>&amp;Neu einlesen</translation>
    </message>
    <message>
        <source>Read the selected documents anew</source>
        <translation>Die gewählten Dokumente neu einlesen</translation>
    </message>
    <message>
        <source>Show in F&amp;older</source>
        <translation>Im Ordner zei&amp;gen</translation>
    </message>
    <message>
        <source>Open the folder that the document is in</source>
        <translation>Den Ordner öffnen, in dem das Dokument liegt</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Close the program</source>
        <translation>Das Programm beenden</translation>
    </message>
    <message>
        <source>&amp;Paste Files</source>
        <translation>Dateien &amp;einfügen</translation>
    </message>
    <message>
        <source>Add the files that were copied elsewhere</source>
        <translation>Die anderswo kopierten Dateien hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Choose Pages…</source>
        <translation>Seiten aus&amp;wählen…</translation>
    </message>
    <message>
        <source>Find pages by what they are: blank, with some words, the last one</source>
        <translation>Seiten nach Eigenschaften finden: leere, mit bestimmten Wörtern, die letzte</translation>
    </message>
    <message>
        <source>&amp;Load Pages…</source>
        <translation>Seiten &amp;laden…</translation>
    </message>
    <message>
        <source>Mark the pages that a list of documents and pages names</source>
        <translation>Die Seiten markieren, die eine Liste von Dokumenten und Seiten nennt</translation>
    </message>
    <message>
        <source>&amp;Save Pages…</source>
        <translation>Seiten &amp;speichern…</translation>
    </message>
    <message>
        <source>Save which pages go from which documents, for another time or vantora run --ranges</source>
        <translation>Speichern, welche Seiten aus welchen Dokumenten entfernt werden, für später oder für vantora run --ranges</translation>
    </message>
    <message>
        <source>Choose Pages</source>
        <translation>Seiten auswählen</translation>
    </message>
    <message>
        <source>&amp;Documents</source>
        <translation>&amp;Dokumente</translation>
    </message>
    <message>
        <source>&amp;Pages</source>
        <translation>&amp;Seiten</translation>
    </message>
    <message>
        <source>&amp;Steps</source>
        <translation>S&amp;chritte</translation>
    </message>
    <message>
        <source>&amp;Help of the Action</source>
        <translation>&amp;Hilfe zur Aktion</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Über</translation>
    </message>
    <message>
        <source>Show the program&apos;s version</source>
        <translation>Die Version des Programms zeigen</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>S&amp;top</source>
        <translation>S&amp;toppen</translation>
    </message>
    <message>
        <source>Stop the run; what is being saved is finished</source>
        <translation>Den Lauf stoppen; was gerade gespeichert wird, wird fertig</translation>
    </message>
    <message>
        <source>&amp;Run</source>
        <translation>Ausfüh&amp;ren</translation>
    </message>
    <message>
        <source>Do this to all documents</source>
        <translation>Das mit allen Dokumenten tun</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>&amp;Rückgängig: %1</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>Wieder&amp;herstellen: %1</translation>
    </message>
    <message>
        <source>Save Repor&amp;t…</source>
        <translation>Bericht s&amp;peichern…</translation>
    </message>
    <message>
        <source>Save what became of the documents, with pictures of the pages that went</source>
        <translation>Speichern, was aus den Dokumenten wurde, mit Bildern der entfernten Seiten</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::WorkKeeper</name>
    <message>
        <source>The list can&apos;t be brought back after a crash: %1.</source>
        <comment>a reason</comment>
        <translation>Die Liste lässt sich nach einem Absturz nicht zurückholen: %1.</translation>
    </message>
</context>
<context>
    <name>vantora::desktop::Workbench</name>
    <message>
        <source>marking %1</source>
        <translation>%1 markieren</translation>
    </message>
    <message>
        <source>Add the documents that pages are to go from.</source>
        <translation>Fügen Sie die Dokumente hinzu, aus denen Seiten entfernt werden sollen.</translation>
    </message>
    <message>
        <source>The documents are being read.</source>
        <translation>Die Dokumente werden gelesen.</translation>
    </message>
    <message>
        <source>A run is being undone.</source>
        <translation>Ein Lauf wird rückgängig gemacht.</translation>
    </message>
    <message>
        <source>The pages that go are being looked for.</source>
        <translation>Die zu entfernenden Seiten werden gesucht.</translation>
    </message>
    <message>
        <source>The page range “%1” %2.</source>
        <comment>a range and what is wrong with it</comment>
        <translation>Der Seitenbereich „%1“ %2.</translation>
    </message>
    <message>
        <source>No step is switched on; add what is to be done on the right.</source>
        <translation>Kein Schritt ist eingeschaltet; fügen Sie rechts hinzu, was getan werden soll.</translation>
    </message>
    <message>
        <source>Mark the pages that go: click them, or type their numbers.</source>
        <translation>Markieren Sie die Seiten, die entfernt werden sollen: durch Anklicken oder mit ihren Nummern.</translation>
    </message>
    <message>
        <source>%1.</source>
        <comment>a sentence</comment>
        <translation>%1.</translation>
    </message>
    <message>
        <source>This run can&apos;t be undone later: %1: %2.</source>
        <comment>a file and what is wrong with it</comment>
        <translation>Dieser Lauf kann später nicht rückgängig gemacht werden: %1: %2.</translation>
    </message>
    <message>
        <source>Run of %1</source>
        <comment>a time</comment>
        <translation>Lauf vom %1</translation>
    </message>
    <message numerus="yes">
        <source>%n document(s)</source>
        <translation>
            <numerusform>%n Dokument</numerusform>
            <numerusform>%n Dokumente</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) have changed on the disk and are read anew. Look at them, and run it then.</source>
        <translation>
            <numerusform>%n Dokument hat sich auf der Festplatte geändert und wird neu gelesen. Sehen Sie es an, bevor Sie den Lauf starten.</numerusform>
            <numerusform>%n Dokumente haben sich auf der Festplatte geändert und werden neu gelesen. Sehen Sie sie an, bevor Sie den Lauf starten.</numerusform>
        </translation>
    </message>
    <message>
        <source>A run was cut off, and it can&apos;t be told which documents it has done; look at them before you run it again.</source>
        <translation>Ein Lauf brach ab, und es lässt sich nicht sagen, welche Dokumente er erledigt hat; sehen Sie sie an, bevor Sie ihn noch einmal starten.</translation>
    </message>
    <message>
        <source>The steps can&apos;t be brought back: %1.</source>
        <comment>a reason</comment>
        <translation>Die Schritte lassen sich nicht zurückholen: %1.</translation>
    </message>
</context>
</TS>
