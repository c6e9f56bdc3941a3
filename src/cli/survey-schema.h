#pragma once

#include <memory>
#include <string>
#include <vector>

struct _xmlDoc;
struct _xmlRelaxNG;

// A place where a document departs from the format of surveys.
struct SchemaFault {
  long line; // from 1
  std::string text;
};

// The schema of survey documents, docs/mavo-survey.rng.
class SurveySchema
{
public:
  SurveySchema();

  // What departs from the schema, one fault for a line; empty if nothing does.
  std::vector<SchemaFault> faults_of(_xmlDoc* document) const;

private:
  struct Free {
    void operator()(_xmlRelaxNG* read) const;
  };
  using Schema = std::unique_ptr<_xmlRelaxNG, Free>;

  static Schema parse(const std::string& text);

  const Schema any;     // all that the program reads
  const Schema written; // what it writes: of a choice the library does not tell what is wrong
};
