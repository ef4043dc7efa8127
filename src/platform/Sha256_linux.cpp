// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/Sha256.h"

#include <openssl/evp.h>

namespace tallyforge::platform {

struct Sha256::Context
{
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> digest{EVP_MD_CTX_new(),
                                                                   &EVP_MD_CTX_free};
    bool works = digest && EVP_DigestInit_ex(digest.get(), EVP_sha256(), nullptr) == 1;
};

Sha256::Sha256()
    : m_context(std::make_unique<Context>())
{
}

Sha256::~Sha256() = default;

void Sha256::addData(QByteArrayView data)
{
    m_context->works = m_context->works && EVP_DigestUpdate(m_context->digest.get(), data.data(),
                                                            size_t(data.size())) == 1;
}

QByteArray Sha256::result()
{
    unsigned char sum[EVP_MAX_MD_SIZE];
    unsigned size = 0;
    if (!m_context->works || EVP_DigestFinal_ex(m_context->digest.get(), sum, &size) != 1) {
        return {};
    }
    return {reinterpret_cast<const char *>(sum), qsizetype(size)};
}

} // namespace tallyforge::platform
