#include "core/TransferError.h"

#include <QNetworkReply>

bool isTransferError(QNetworkReply *reply)
{
    const QNetworkReply::NetworkError error = reply->error();
    if (error == QNetworkReply::NoError)
        return false;
    if (!reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid())
        return true;
    const bool contentError = error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError;
    const bool serverError = error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError;
    return !(contentError || serverError || error == QNetworkReply::ProtocolInvalidOperationError);
}
