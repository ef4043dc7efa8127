#!/usr/bin/env node
// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers
// Prints the score, now and whenever anything changes.

import { createConnection } from "node:net";

const socket = createConnection(9001, "127.0.0.1").setEncoding("utf8");
let received = "";
for await (const text of socket) {
    // Only "\n" ends a line; node:readline would also split at some characters inside a value.
    const lines = (received + text).split("\n");
    received = lines.pop();
    for (const line of lines) {
        const { fields } = JSON.parse(line);
        console.log(fields.home_score ?? "-", ":", fields.away_score ?? "-");
    }
}
