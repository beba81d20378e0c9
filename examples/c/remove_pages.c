/*
 * remove_pages IN.pdf OUT.pdf FIRST COUNT: removes COUNT pages from the page FIRST on.
 *
 *   cc remove_pages.c -o remove_pages $(pkg-config --cflags --libs karvel-pdf-library)
 */
#include <KarvelPDFLibrary.h>

#include <locale.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* The text as a buffer of the library, which the call that it is passed to frees; null for an empty
 * one. */
static const wchar_t* wide_text(int library, const char* text)
{
    const size_t most = strlen(text) + 1;
    wchar_t* const characters = calloc(most, sizeof *characters);
    const size_t length = characters ? mbstowcs(characters, text, most) : 0;
    char* buffer = NULL;
    if (length > 0 && length != (size_t)-1) {
        const int bytes = (int)(length * sizeof *characters);
        buffer = KPLCreateBuffer(library, bytes);
        KPLAddToBuffer(library, buffer, (const char*)characters, bytes);
    }
    free(characters);
    return (const wchar_t*)buffer;
}

/* A page or a number of them; 0 for what is none. */
static int number(const char* text)
{
    char* end;
    const long value = strtol(text, &end, 10);
    return *end == '\0' && value > 0 && value < 1000000000 ? (int)value : 0;
}

static int remove_pages(int library, char** arguments)
{
    const int first = number(arguments[3]);
    const int count = number(arguments[4]);
    return KPLLoadFromFile(library, wide_text(library, arguments[1]), NULL) != 0 &&
           KPLDeletePages(library, first, count) == 1 &&
           KPLSaveToFile(library, wide_text(library, arguments[2])) == 1;
}

int main(int count, char** arguments)
{
    if (count != 5) {
        fprintf(stderr, "usage: remove_pages IN.pdf OUT.pdf FIRST COUNT\n");
        return 2;
    }
    setlocale(LC_CTYPE, "");
    const int library = KPLCreateLibrary();
    if (library == 0) {
        fprintf(stderr, "remove_pages: the library does not start\n");
        return 1;
    }
    const int done = remove_pages(library, arguments);
    if (done) {
        printf("%s: %d pages left\n", arguments[2], KPLPageCount(library));
    } else {
        /* The number before the text: asking for it may not end the text's life. */
        const int code = KPLLastErrorCode(library);
        fprintf(stderr, "remove_pages: %ls (code %d)\n", KPLLastErrorText(library), code);
    }
    KPLReleaseLibrary(library);
    return done ? 0 : 1;
}
