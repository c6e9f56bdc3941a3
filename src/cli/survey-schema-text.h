#pragma once

// The text of docs/mavo-survey.rng, the schema of survey documents. The build embeds it.
extern const char* const survey_schema_text;
