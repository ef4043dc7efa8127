#!/usr/bin/env node
// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers
// Prints the score, now and whenever anything changes.

import { createConnection } from "node:net";
import { createInterface } from "node:readline";

for await (const line of createInterface({ input: createConnection(9001, "127.0.0.1") })) {
    const { fields } = JSON.parse(line);
    console.log(fields.home_score ?? "-", ":", fields.away_score ?? "-");
}
