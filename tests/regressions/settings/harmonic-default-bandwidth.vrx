<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=0,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" channel="both" freqLock="1">
			<filter_description>
				<type>2ndOrdBandReject</type>
				<name></name>
				<param_list>
					<frequency_hz>50.000000</frequency_hz>
					<bandwidth_oct>0.0199999996</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" selected="true" channel="both" freqLock="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
ttings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=0,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" channel="both" freqLock="1">
			<filter_description>
				<type>2ndOrdBandReject</type>
				<name></name>
				<param_list>
					<frequency_hz>50.000000</frequency_hz>
					<bandwidth_oct>0.0199999996</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" selected="true" channel="both" freqLock="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-18</gain_db>
					<frequency_hz>50.000000</frequency_hz>
					<harmonic_components>odd,even</harmonic_components>
					<component_gain>decaying</component_gain>
					<rev_gain_decayngs>
