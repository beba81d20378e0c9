<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>DocumentCommands</name>
    <message numerus="yes">
        <source>removing %n document(s)</source>
        <translation>
            <numerusform>removing a document</numerusform>
            <numerusform>removing %n documents</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>adding %n document(s)</source>
        <translation>
            <numerusform>adding a document</numerusform>
            <numerusform>adding %n documents</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ReportPage</name>
    <message numerus="yes">
        <source>%n page(s) that went are not shown, so that this file stays small.</source>
        <translation>
            <numerusform>%n page that went is not shown, so that this file stays small.</numerusform>
            <numerusform>%n pages that went are not shown, so that this file stays small.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n page(s) removed</source>
        <translation>
            <numerusform>%n page removed</numerusform>
            <numerusform>%n pages removed</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RunOutlook</name>
    <message numerus="yes">
        <source>%n page(s)</source>
        <translation>
            <numerusform>%n page</numerusform>
            <numerusform>%n pages</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n file(s) that exist will be replaced.</source>
        <translation>
            <numerusform>%n file that exists will be replaced.</numerusform>
            <numerusform>%n files that exist will be replaced.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) without marked pages stay as they are.</source>
        <translation>
            <numerusform>%n document without marked pages stays as it is.</numerusform>
            <numerusform>%n documents without marked pages stay as they are.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) are done.</source>
        <translation>
            <numerusform>%n document is done.</numerusform>
            <numerusform>%n documents are done.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) that can&apos;t be read are left out.</source>
        <translation>
            <numerusform>%n document that can&apos;t be read is left out.</numerusform>
            <numerusform>%n documents that can&apos;t be read are left out.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s)</source>
        <comment>after: will go from</comment>
        <translation>
            <numerusform>%n document</numerusform>
            <numerusform>%n documents</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) can&apos;t be written: %1.</source>
        <comment>the first reason</comment>
        <translation>
            <numerusform>%n document can&apos;t be written: %1.</numerusform>
            <numerusform>%n documents can&apos;t be written: %1.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ShownTexts</name>
    <message numerus="yes">
        <source>%n byte(s)</source>
        <translation>
            <numerusform>%n byte</numerusform>
            <numerusform>%n bytes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::ChoosePane</name>
    <message numerus="yes">
        <source>%n document(s)</source>
        <translation>
            <numerusform>%n document</numerusform>
            <numerusform>%n documents</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n page(s)</source>
        <translation>
            <numerusform>%n page</numerusform>
            <numerusform>%n pages</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) can&apos;t be judged and keep the marks that they had:</source>
        <translation>
            <numerusform>%n document can&apos;t be judged and keeps the marks that it had:</numerusform>
            <numerusform>%n documents can&apos;t be judged and keep the marks that they had:</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::DocumentsPane</name>
    <message numerus="yes">
        <source>Looking for documents: %n found</source>
        <translation>
            <numerusform>Looking for documents: %n found</numerusform>
            <numerusform>Looking for documents: %n found</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Reading: %n document(s) left</source>
        <translation>
            <numerusform>Reading: %n document left</numerusform>
            <numerusform>Reading: %n documents left</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s)</source>
        <translation>
            <numerusform>%n document</numerusform>
            <numerusform>%n documents</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::MainWindow</name>
    <message numerus="yes">
        <source>%n document(s)</source>
        <translation>
            <numerusform>%n document</numerusform>
            <numerusform>%n documents</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::PagesPane</name>
    <message numerus="yes">
        <source>of %n</source>
        <comment>pages</comment>
        <translation>
            <numerusform>of %n</numerusform>
            <numerusform>of %n</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n page(s) will be removed</source>
        <translation>
            <numerusform>%n page will be removed</numerusform>
            <numerusform>%n pages will be removed</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s)</source>
        <comment>after: removed from</comment>
        <translation>
            <numerusform>%n document</numerusform>
            <numerusform>%n documents</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::RangesFiles</name>
    <message numerus="yes">
        <source>%n document(s) have their pages from the list</source>
        <translation>
            <numerusform>%n document has its pages from the list</numerusform>
            <numerusform>%n documents have their pages from the list</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n that it doesn&apos;t name stay as they were</source>
        <translation>
            <numerusform>%n that it doesn&apos;t name stays as it was</numerusform>
            <numerusform>%n that it doesn&apos;t name stay as they were</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The pages of %n document(s) are saved as %1.</source>
        <translation>
            <numerusform>The pages of %n document are saved as %1.</numerusform>
            <numerusform>The pages of %n documents are saved as %1.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::RecoveryBar</name>
    <message numerus="yes">
        <source>A window was cut off with %n document(s) in its list. They can be brought back, with the pages that go and the steps.</source>
        <translation>
            <numerusform>A window was cut off with a document in its list. It can be brought back, with the pages that go and the steps.</numerusform>
            <numerusform>A window was cut off with %n documents in its list. They can be brought back, with the pages that go and the steps.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s)</source>
        <translation>
            <numerusform>%n document</numerusform>
            <numerusform>%n documents</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::ReportSaver</name>
    <message numerus="yes">
        <source>%n picture(s)</source>
        <translation>
            <numerusform>%n picture</numerusform>
            <numerusform>%n pictures</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::ResultsPane</name>
    <message numerus="yes">
        <source>%n document(s) done</source>
        <translation>
            <numerusform>%n document done</numerusform>
            <numerusform>%n documents done</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n failed</source>
        <translation>
            <numerusform>%n failed</numerusform>
            <numerusform>%n failed</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n page(s) removed</source>
        <translation>
            <numerusform>%n page removed</numerusform>
            <numerusform>%n pages removed</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::RunBar</name>
    <message numerus="yes">
        <source>%n document(s)</source>
        <translation>
            <numerusform>%n document</numerusform>
            <numerusform>%n documents</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n failed</source>
        <translation>
            <numerusform>%n failed</numerusform>
            <numerusform>%n failed</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::UndoController</name>
    <message numerus="yes">
        <source>%n original(s) put back</source>
        <translation>
            <numerusform>%n original put back</numerusform>
            <numerusform>%n originals put back</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n result(s) removed</source>
        <translation>
            <numerusform>%n result removed</numerusform>
            <numerusform>%n results removed</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n original(s) will be put back</source>
        <translation>
            <numerusform>%n original will be put back</numerusform>
            <numerusform>%n originals will be put back</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n result(s) will be removed</source>
        <translation>
            <numerusform>%n result will be removed</numerusform>
            <numerusform>%n results will be removed</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n will be left alone</source>
        <translation>
            <numerusform>%n will be left alone</numerusform>
            <numerusform>%n will be left alone</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n undone already</source>
        <translation>
            <numerusform>%n undone already</numerusform>
            <numerusform>%n undone already</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n left alone</source>
        <translation>
            <numerusform>%n left alone</numerusform>
            <numerusform>%n left alone</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantora::desktop::Workbench</name>
    <message numerus="yes">
        <source>%n document(s)</source>
        <translation>
            <numerusform>%n document</numerusform>
            <numerusform>%n documents</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n document(s) have changed on the disk and are read anew. Look at them, and run it then.</source>
        <translation>
            <numerusform>%n document has changed on the disk and is read anew. Look at it, and run it then.</numerusform>
            <numerusform>%n documents have changed on the disk and are read anew. Look at them, and run it then.</numerusform>
        </translation>
    </message>
</context>
</TS>
