#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/form_fields/FieldAttributes.h"
#include "KarvelPDFLibrary/form_fields/FieldTree.h"
#include "exports.h"

using namespace karvel;
using boundary::onUpToDateDocument;

int KPLFieldCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onUpToDateDocument(self, [](Document& document) -> Result<int> {
            return static_cast<int>(form_fields::terminalFields(document).size());
        });
    });
}

wchar_t* KPLGetFieldName(int instance, int field)
{
    return boundary::wideString(instance, [=](Instance& self) {
        return onUpToDateDocument(self, [=](Document& document) -> Result<std::string> {
            const std::vector<form_fields::Field> fields = form_fields::terminalFields(document);
            if (field < 1 || static_cast<std::size_t>(field) > fields.size()) {
                return fail(ErrorCode::NotFound,
                            document.name() + ": has no field " + std::to_string(field));
            }
            return form_fields::fieldName(fields[static_cast<std::size_t>(field) - 1].object);
        });
    });
}
