#pragma once

// The schema of survey documents, docs/mavo-survey.rng.
extern const char* const survey_schema_text;
