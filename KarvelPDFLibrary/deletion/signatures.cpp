#include "KarvelPDFLibrary/deletion/modules.h"
#include "KarvelPDFLibrary/form_fields/FieldAttributes.h"

namespace karvel::deletion {

namespace {

/// Bits of /SigFlags (ISO 32000-2, table 225).
constexpr long long signaturesExist = 1;

bool isSignatureValue(QPDFObjectHandle object)
{
    if (!object.isDictionary()) {
        return false;
    }
    QPDFObjectHandle type = object.getKey("/Type");
    const bool typed =
        type.isName() && (type.getName() == "/Sig" || type.getName() == "/DocTimeStamp");
    return typed || (object.hasKey("/ByteRange") && object.hasKey("/Contents"));
}

class SignatureRemover {
public:
    explicit SignatureRemover(Removal& removal) : removal_(removal) {}

    void run()
    {
        // Fields on removed pages were signed as well.
        for (QPDFObjectHandle object : removal_.formerObjectsWith(index::HasSignature)) {
            if (!object.isDictionary()) {
                continue;
            }
            if (isSignatureValue(object)) {
                values_.push_back(object);
            } else {
                clear(object);
            }
        }
        // A field may inherit from above that it is one for signatures, and say nothing itself.
        const std::vector<QPDFObjectHandle> values = values_;
        for (const QPDFObjectHandle& value : values) {
            clearFieldsOf(value);
        }
        removePermissions();
        if (removed_) {
            removeValidationData();
            putFlagsRight();
        }
    }

private:
    void clearFieldsOf(const QPDFObjectHandle& value)
    {
        if (removal_.isGone(value)) {
            return;
        }
        for (QPDFObjectHandle field : removal_.referrersOf(value.getObjectID())) {
            if (field.isDictionary() && field.getKey("/V").getObjectID() == value.getObjectID()) {
                clear(field);
            }
        }
    }

    void clear(QPDFObjectHandle field)
    {
        if (form_fields::fieldType(field) != "/Sig") {
            return;
        }
        fieldsLeft_ = fieldsLeft_ || !removal_.isGone(field);
        QPDFObjectHandle value = field.getKey("/V");
        if (!value.isDictionary()) {
            return;
        }
        removed_ = true;
        removal_.warn("the signature in field \"" + form_fields::fieldName(field) +
                      "\" no longer holds and was removed");
        removal_.drop(value);
        if (removal_.isGone(field)) {
            return;
        }
        removal_.changes().edit(field).removeKey("/V");
        // What the widgets show says that somebody signed.
        removeAppearance(field, field);
        QPDFObjectHandle kids = field.getKey("/Kids");
        if (kids.isArray()) {
            for (const QPDFObjectHandle& kid : kids.getArrayAsVector()) {
                removeAppearance(kid, kids.isIndirect() ? kids : field);
            }
        }
    }

    void removeAppearance(QPDFObjectHandle widget, const QPDFObjectHandle& owner)
    {
        if (widget.isDictionary() && !removal_.isGone(widget) && widget.hasKey("/AP")) {
            removal_.changes().edit(widget.isIndirect() ? widget : owner);
            widget.removeKey("/AP");
        }
    }

    /// Certification and usage rights (ISO 32000-2, 12.8.6).
    void removePermissions()
    {
        QPDFObjectHandle permissions = removal_.catalogEntry("/Perms");
        if (!permissions.isDictionary()) {
            return;
        }
        const bool usageRights = permissions.hasKey("/UR3") || permissions.hasKey("/UR");
        if (usageRights) {
            removal_.warn("the signature for the document's usage rights no longer holds and was "
                          "removed");
        }
        for (const auto& [key, value] : permissions.getDictAsMap()) {
            removal_.drop(value);
        }
        removal_.drop(permissions);
        removal_.changes().edit(removal_.catalog()).removeKey("/Perms");
        removed_ = true;
    }

    /// Certificates and revocation data by which the signatures were to be verified (ISO 32000-2,
    /// 12.8.4.3).
    void removeValidationData()
    {
        QPDFObjectHandle store = removal_.catalogEntry("/DSS");
        if (!store.isNull()) {
            removal_.drop(store);
            removal_.changes().edit(removal_.catalog()).removeKey("/DSS");
        }
    }

    void putFlagsRight()
    {
        QPDFObjectHandle form = removal_.catalogEntry("/AcroForm");
        if (!form.isDictionary() || !form.hasKey("/SigFlags")) {
            return;
        }
        removal_.changes().edit(form.isIndirect() ? form : removal_.catalog());
        if (fieldsLeft_) {
            form.replaceKey("/SigFlags", QPDFObjectHandle::newInteger(signaturesExist));
        } else {
            form.removeKey("/SigFlags");
        }
    }

    Removal& removal_;
    std::vector<QPDFObjectHandle> values_;
    bool fieldsLeft_ = false;
    bool removed_ = false;
};

} // namespace

void removeSignatures(Removal& removal)
{
    SignatureRemover(removal).run();
}

} // namespace karvel::deletion
