#!/usr/bin/env node
// SPDX-License-Identifier: GPL-2.0-or-later
// SPDX-FileCopyrightText: 2026 The Tallyforge developers
// Lists the account's devices, or follows the one whose id is given, through OBS's own remote
// control without a password. Runs in Node.js from version 22 on, and but for the arguments in a
// browser.

const [device] = process.argv.slice(2);
const requestData = { vendorName: "tallyforge", requestType: "devices" };
if (device) {
    Object.assign(requestData, { requestType: "use", requestData: { device } });
}
const [hello, identify, identified, request, response] = [0, 1, 2, 6, 7];
const obs = new WebSocket("ws://127.0.0.1:4455");
const send = (op, d) => obs.send(JSON.stringify({ op, d }));
obs.onmessage = ({ data }) => {
    const { op, d } = JSON.parse(data);
    if (op === hello) {
        send(identify, { rpcVersion: 1, eventSubscriptions: 0 });
    } else if (op === identified) {
        send(request, { requestType: "CallVendorRequest", requestId: "1", requestData });
    } else if (op === response) {
        const reply = d.responseData?.responseData ?? { ok: false, error: d.requestStatus.comment };
        for (const { id, name } of reply.devices ?? []) {
            console.log(`${id}\t${name}`);
        }
        if (!reply.ok) {
            console.error(reply.error);
            process.exitCode = 1;
        }
        obs.close();
    }
};
