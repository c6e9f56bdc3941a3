#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

struct _xmlDoc;     // NOLINT(bugprone-reserved-identifier): the library's
struct _xmlRelaxNG; // NOLINT(bugprone-reserved-identifier): the library's

// A violation of the schema.
struct SchemaFault {
  std::optional<long> line; // from 1; empty if the library does not report it
  std::string text;
};

// The schema of survey documents, docs/mavo-survey.rng.
class SurveySchema
{
public:
  SurveySchema(); // parses the schema

  // Returns the violations in a document by line, at most one for each line. The caller owns
  // the document.
  std::vector<SchemaFault> faults_of(_xmlDoc* document) const;

private:
  struct Free {
    void operator()(_xmlRelaxNG* read) const;
  };
  using Schema = std::unique_ptr<_xmlRelaxNG, Free>;

  static Schema parse(const std::string& text);

  // The library reports no details of a fault in a choice between formats. So there is a
  // schema without that choice for documents of the current format.
  const Schema any;     // all documents that the program reads
  const Schema written; // only documents that it writes
};
