// Bundles the page into one template: page.html with its style, its script and the licences of what is bundled, and
// the word @DATA@ where quarvo-report writes the data.
//
//   node build.mjs [OUTPUT]    OUTPUT: report-template.html when none is given
import { createHash } from "node:crypto";
import { existsSync, readFileSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { build } from "esbuild";
import { write_contract } from "./contract.mjs";

const here = dirname(fileURLToPath(import.meta.url));
const output = process.argv[2] ?? "report-template.html";

async function bundle(entry) {
  const result = await build({
    absWorkingDir: here, entryPoints: [entry], bundle: true, minify: true, write: false, metafile: true,
    format: "iife", target: ["es2022", "chrome100", "firefox100", "safari15.4"], charset: "ascii",
    legalComments: "none", logLevel: "warning",
  });
  return { text: result.outputFiles[0].text.trim(), inputs: Object.keys(result.metafile.inputs) };
}

function package_of(input) {
  const match = /^node_modules\/((?:@[^/]+\/)?[^/]+)\//.exec(input);
  return match ? match[1] : null;
}

function licence_of(name) {
  const directory = join(here, "node_modules", name);
  const { version, license } = JSON.parse(readFileSync(join(directory, "package.json"), "utf8"));
  const file = ["LICENSE", "LICENSE.md", "LICENSE.txt", "LICENCE"].map((n) => join(directory, n)).find(existsSync);
  const text = file ? readFileSync(file, "utf8").trim() : `Licence: ${license}`;
  return { heading: `${name} ${version}`, text };
}

// Packages that share a licence text, word for word, stand above one copy of it.
function licences(inputs) {
  const headings = new Map();
  for (const name of [...new Set(inputs.map(package_of))].filter(Boolean).sort()) {
    const { heading, text } = licence_of(name);
    headings.set(text, [...(headings.get(text) ?? []), heading]);
  }
  return [...headings].map(([text, names]) => `${names.join(", ")}\n\n${text}\n`).join("\n\n");
}

// Of Quarvo itself, whose script and style are in the page. The build brings the file here; in the tree it stands above.
function own_licence() {
  const file = [join(here, "LICENSE"), join(here, "..", "LICENSE")].find(existsSync);
  return `Quarvo\n\n${readFileSync(file, "utf8").trim()}\n`;
}

function escaped(text) {
  return text.replaceAll("&", "&amp;").replaceAll("<", "&lt;").replaceAll(">", "&gt;");
}

function must_not_hold(text, ...words) {
  for (const word of words) if (text.toLowerCase().includes(word)) throw new Error(`The bundle holds ${word}`);
}

write_contract();
const script = await bundle("src/page.ts");
const style = await bundle("src/page.css");
must_not_hold(script.text, "</script", "<!--");
must_not_hold(style.text, "</style");

const parts = {
  "@SCRIPT_HASH@": "sha256-" + createHash("sha256").update(script.text).digest("base64"),
  "@STYLE@": style.text,
  "@LICENCES@": escaped(`${own_licence()}\n\n${licences(script.inputs)}`),
  "@SCRIPT@": script.text,
};
const page = readFileSync(join(here, "src/page.html"), "utf8");
const filled = page.replace(/@(SCRIPT_HASH|STYLE|LICENCES|SCRIPT)@/g, (word) => parts[word]);
if (filled.split("@DATA@").length !== 2) throw new Error("The template must hold @DATA@ once.");
writeFileSync(output, filled);
