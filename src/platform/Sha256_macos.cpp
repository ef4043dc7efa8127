// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers

#include "platform/Sha256.h"

#include <CommonCrypto/CommonDigest.h>

namespace tallyforge::platform {

struct Sha256::Context
{
    CC_SHA256_CTX digest;
};

Sha256::Sha256()
    : m_context(std::make_unique<Context>())
{
    CC_SHA256_Init(&m_context->digest);
}

Sha256::~Sha256() = default;

void Sha256::addData(QByteArrayView data)
{
    CC_SHA256_Update(&m_context->digest, data.data(), CC_LONG(data.size()));
}

QByteArray Sha256::result()
{
    QByteArray sum(CC_SHA256_DIGEST_LENGTH, Qt::Uninitialized);
    CC_SHA256_Final(reinterpret_cast<unsigned char *>(sum.data()), &m_context->digest);
    return sum;
}

} // namespace tallyforge::platform
