#include "KarvelPDFLibrary/saving/Cipher.h"

#include <algorithm>
#include <nettle/aes.h>
#include <nettle/arcfour.h>
#include <nettle/cbc.h>
#include <random>
#include <stdexcept>

namespace karvel::saving {

namespace {

std::uint8_t* bytes(std::string& text)
{
    return reinterpret_cast<std::uint8_t*>(text.data());
}

const std::uint8_t* bytes(const std::string& text)
{
    return reinterpret_cast<const std::uint8_t*>(text.data());
}

std::string rc4(const std::string& key, const std::string& plain)
{
    arcfour_ctx context;
    arcfour_set_key(&context, key.size(), bytes(key));
    std::string out(plain.size(), '\0');
    arcfour_crypt(&context, plain.size(), bytes(out), bytes(plain));
    return out;
}

/// AES in CBC mode behind a random first block, padded to whole blocks (ISO 32000-2, 7.6.3.1).
std::string aes(const std::string& key, std::string plain)
{
    const std::size_t padding = AES_BLOCK_SIZE - plain.size() % AES_BLOCK_SIZE;
    plain.append(padding, static_cast<char>(padding));
    std::string vector(AES_BLOCK_SIZE, '\0');
    std::random_device random;
    std::generate(vector.begin(), vector.end(), [&] { return static_cast<char>(random()); });

    std::string out(plain.size(), '\0');
    std::string chained = vector;
    if (key.size() == AES128_KEY_SIZE) {
        aes128_ctx context;
        aes128_set_encrypt_key(&context, bytes(key));
        cbc_aes128_encrypt(&context, bytes(chained), plain.size(), bytes(out), bytes(plain));
    } else if (key.size() == AES256_KEY_SIZE) {
        aes256_ctx context;
        aes256_set_encrypt_key(&context, bytes(key));
        cbc_aes256_encrypt(&context, bytes(chained), plain.size(), bytes(out), bytes(plain));
    } else {
        throw std::logic_error("an AES key of an unexpected length");
    }
    return vector + out;
}

} // namespace

std::optional<Cipher> Cipher::of(QPDF& file)
{
    Cipher cipher;
    int permissions = 0;
    QPDF::encryption_method_e files = QPDF::e_none;
    file.isEncrypted(cipher.revision_, permissions, cipher.version_, cipher.streams_,
                     cipher.strings_, files);
    for (const QPDF::encryption_method_e method : {cipher.streams_, cipher.strings_}) {
        if (method == QPDF::e_unknown) {
            return std::nullopt;
        }
    }
    // Before crypt filters came, everything was RC4.
    if (cipher.version_ < 4) {
        cipher.streams_ = cipher.strings_ = QPDF::e_rc4;
    }
    cipher.fileKey_ = file.getEncryptionKey();
    QPDFObjectHandle covers = file.getTrailer().getKey("/Encrypt").getKey("/EncryptMetadata");
    cipher.coversMetadata_ = cipher.version_ < 4 || !covers.isBool() || covers.getBoolValue();
    return cipher;
}

std::string Cipher::encipher(QPDF::encryption_method_e method, const std::string& plain,
                             QPDFObjGen object) const
{
    if (method == QPDF::e_none) {
        return plain;
    }
    const bool withAes = method != QPDF::e_rc4;
    const std::string key = QPDF::compute_data_key(fileKey_, object.getObj(), object.getGen(),
                                                   withAes, version_, revision_);
    return withAes ? aes(key, plain) : rc4(key, plain);
}

std::string Cipher::string(const std::string& plain, QPDFObjGen object) const
{
    return encipher(strings_, plain, object);
}

std::string Cipher::stream(const std::string& plain, QPDFObjGen object) const
{
    return encipher(streams_, plain, object);
}

std::string Cipher::stream(const std::string& plain, QPDFObjGen object,
                           QPDFObjectHandle dictionary) const
{
    const bool isClear = dictionary.isDictionaryOfType("/XRef") ||
                         (!coversMetadata_ && dictionary.isDictionaryOfType("/Metadata"));
    return isClear ? plain : stream(plain, object);
}

} // namespace karvel::saving
