"""One line for a person on why a connection came to nothing."""

import asyncio
import ssl

import h11

REASONS = (
    (ConnectionRefusedError, "connection refused"),
    ((TimeoutError, asyncio.TimeoutError), "no answer in time"),
    (ConnectionResetError, "connection reset"),
    (ssl.SSLError, "TLS handshake failed"),
    (h11.RemoteProtocolError, "the answer is not HTTP"),
)


def reason(error: BaseException) -> str:
    """Looks for a cause with a name of its own, from the innermost out."""
    chain = [error]
    while (inner := chain[-1].__cause__ or chain[-1].__context__) is not None and inner not in chain:
        chain.append(inner)
    for cause in reversed(chain):
        for kinds, text in REASONS:
            if isinstance(cause, kinds):
                return text
    return (str(error).splitlines() or [type(error).__name__])[0]
