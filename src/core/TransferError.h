#pragma once

class QNetworkReply;

// Whether a finished reply failed in the transfer itself. An HTTP error status is an
// answer like any other: its body arrived and is the caller's to judge.
bool isTransferError(QNetworkReply *reply);
