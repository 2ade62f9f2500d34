// Validates documents against the schemas of their kinds: a document has an error exactly where the mapping
// refuses a value or finds it to be of the wrong kind.
//
//     node validate.mjs PROGRAM
//
// PROGRAM writes one JSON object a line: {"kind", "schema"}, and after each of these the documents of that
// kind, {"name", "document", "errors", "textsMayDiffer"} with the JSON Pointers of the values at fault. Where
// texts may differ, the validator may refuse a URL or a colour that the mapping takes: its own notion of a URL
// is a little narrower. It is installed beside this file at the first run; where that cannot be done the test
// is skipped.

import { spawn, spawnSync } from "node:child_process";
import { existsSync } from "node:fs";
import { createInterface } from "node:readline";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const skipped = 77;
const here = dirname(fileURLToPath(import.meta.url));

function install() {
  // Its last act is to write this file, so that an installation which was cut short is not taken for whole.
  if (existsSync(join(here, "node_modules", ".package-lock.json"))) return;
  const npm = spawnSync("npm", ["ci", "--no-audit", "--no-fund", "--ignore-scripts"], {
    cwd: here,
    encoding: "utf8",
  });
  if (npm.status === 0) return;
  console.log("skipped: npm could not install the validator\n" + (npm.stderr ?? npm.error));
  process.exit(skipped);
}

install();
const { default: Ajv } = await import("ajv/dist/2020.js");
const { default: addFormats } = await import("ajv-formats");

const counts = new Map();
const problems = [];
let kind;
let validate;

const decidedByContents = ["format", "pattern"];

function take({ kind: newKind, schema, name, document, errors, textsMayDiffer }) {
  if (schema) {
    const ajv = new Ajv({ allErrors: true, strict: true, allowUnionTypes: true, strictTypes: false });
    addFormats(ajv);
    kind = newKind;
    validate = ajv.compile(schema);
    counts.set(kind, 0);
    return;
  }
  counts.set(kind, counts.get(kind) + 1);
  validate(document);
  const found = validate.errors ?? [];
  const places = [...new Set(found.map((error) => error.instancePath))];
  const isAllowed = (error) => textsMayDiffer && decidedByContents.includes(error.keyword);
  const areAllFound = errors.every((place) => places.includes(place));
  const areAllExpected = found.every((error) => errors.includes(error.instancePath) || isAllowed(error));
  if (areAllFound && areAllExpected) return;
  problems.push(`${kind}: ${name}: errors at ${JSON.stringify(places)}, not at ${JSON.stringify(errors)}`);
}

const program = spawn(process.argv[2], { stdio: ["ignore", "pipe", "inherit"] });
const ended = new Promise((resolve) => program.on("close", resolve));
for await (const line of createInterface({ input: program.stdout })) take(JSON.parse(line));
if ((await ended) !== 0) problems.push(`${process.argv[2]} failed`);

const kindsOfDocuments = 8;
for (const [name, count] of counts) if (count === 0) problems.push(`${name}: no documents`);
if (counts.size !== kindsOfDocuments) problems.push(`${counts.size} schemas`);
console.log([...counts].map(([name, count]) => `${name}: ${count} documents`).join("\n"));
const shown = 20;
console.log(problems.slice(0, shown).join("\n"));
process.exit(problems.length === 0 ? 0 : 1);
