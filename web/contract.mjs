// Writes the types of the page's data, src/report-data.ts, from report-data.schema.json, where they are described once.
//
//   node contract.mjs
//
// Knows the part of JSON Schema that the description uses, and refuses any other.
import { readFileSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";

const here = dirname(fileURLToPath(import.meta.url));
const simple = { integer: "number", number: "number", string: "string", null: "null" };

function type_name(definition) {
  return definition[0].toUpperCase() + definition.slice(1);
}

function object_type(schema, indent) {
  const keys = Object.keys(schema.properties);
  const is_closed = schema.additionalProperties === false && keys.every((key) => schema.required.includes(key));
  if (!is_closed || keys.length !== schema.required.length) throw new Error(`An open object: ${keys}`);
  const inner = `${indent}  `;
  const lines = keys.map((key) => `${inner}${key}: ${type_of(schema.properties[key], inner)};\n`);
  return `{\n${lines.join("")}${indent}}`;
}

function array_type(schema, indent) {
  const item = type_of(schema.items, indent);
  if (schema.minItems === 2 && schema.maxItems === 2) return `[${item}, ${item}]`;
  return item.includes("|") ? `(${item})[]` : `${item}[]`;
}

function type_of(schema, indent) {
  if (schema.$ref) return type_name(schema.$ref.replace("#/definitions/", ""));
  if ("const" in schema) return JSON.stringify(schema.const);
  if (schema.anyOf) return schema.anyOf.map((one) => type_of(one, indent)).join(" | ");
  if (schema.enum) return schema.enum.map((value) => JSON.stringify(value)).join(" | ");
  if (Array.isArray(schema.type)) return schema.type.map((type) => type_of({ ...schema, type }, indent)).join(" | ");
  if (schema.type === "object") return object_type(schema, indent);
  if (schema.type === "array") return array_type(schema, indent);
  if (simple[schema.type]) return simple[schema.type];
  throw new Error(`Not understood: ${JSON.stringify(schema)}`);
}

export function write_contract() {
  const schema = JSON.parse(readFileSync(join(here, "report-data.schema.json"), "utf8"));
  const definitions = Object.entries(schema.definitions)
    .map(([name, definition]) => `export type ${type_name(name)} = ${type_of(definition, "")};\n`);
  const text = `// Written by contract.mjs from report-data.schema.json.\n\n${definitions.join("\n")}\n` +
    `export type ReportData = ${type_of(schema, "")};\n`;
  writeFileSync(join(here, "src/report-data.ts"), text);
}

if (process.argv[1] === fileURLToPath(import.meta.url)) write_contract();
