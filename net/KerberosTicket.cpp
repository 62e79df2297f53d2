// SPDX-FileCopyrightText: VARDO Technologies
// SPDX-License-Identifier: LicenseRef-VARDO

#include "net/KerberosTicket.h"

#include <gssapi/gssapi.h>

namespace {

// The first message to the service; empty after a failure. Functions and order are those of RFC 2744.
QByteArray FirstToken(gss_name_t service) {
    // SPNEGO (RFC 4178), by its object identifier 1.3.6.1.5.5.2.
    QByteArray identifier = QByteArray::fromHex("2b0601050502");
    gss_OID_desc mechanism{static_cast<OM_uint32>(identifier.size()), identifier.data()};
    gss_ctx_id_t context = GSS_C_NO_CONTEXT;
    gss_buffer_desc token = GSS_C_EMPTY_BUFFER;
    OM_uint32 detail = 0;
    const OM_uint32 result =
        gss_init_sec_context(&detail, GSS_C_NO_CREDENTIAL, &context, service, &mechanism, 0, GSS_C_INDEFINITE,
                             GSS_C_NO_CHANNEL_BINDINGS, GSS_C_NO_BUFFER, nullptr, &token, nullptr, nullptr);
    QByteArray bytes;
    if (!GSS_ERROR(result))
        bytes = {static_cast<const char*>(token.value), static_cast<qsizetype>(token.length)};
    gss_release_buffer(&detail, &token);
    gss_delete_sec_context(&detail, &context, GSS_C_NO_BUFFER);
    return bytes;
}

}  // namespace

QByteArray AnswerWithTicket(const QString& host) {
    QByteArray text = "HTTP@" + host.toUtf8();
    gss_buffer_desc buffer{static_cast<std::size_t>(text.size()), text.data()};
    gss_name_t service = GSS_C_NO_NAME;
    OM_uint32 detail = 0;
    if (GSS_ERROR(gss_import_name(&detail, &buffer, GSS_C_NT_HOSTBASED_SERVICE, &service)))
        return {};
    const QByteArray token = FirstToken(service);
    gss_release_name(&detail, &service);
    return token.isEmpty() ? token : "Negotiate " + token.toBase64();
}
