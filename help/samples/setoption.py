from varnel import app

for project in app.projects:
    for configuration in project.configurations:
        project.properties.setProperty("buildWarningsAsErrors", "true", configuration)
    project.save()
