<!-- Copyright (c) Zorvane Sound Works, 2026 -->ããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããããã<!-- Copyright (c) Zorvane Sound Works, 2026 -->
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=0,sort=0,zoom=1</attributes>
	<compensation_gain>0</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" channel="both" freqLock="1">
			<filter_description>
				<type>2ndOrdBandReject</type>
				<name></name>
				<param_list>
					<frequency_hz>60.000000</frequency_hz>
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
					<frequency_hz>ãããããããããã
<vorix_filter_settings version="Zorvane Sound Works Vorix Settings v1.0">
	<attributes>handles=0,labels=1,selected=0,sort=0,zoom=2</attributes>
	<compensation_gain>-0.5</compensation_gain>
	<filter_element number="1">
		<filter enabled="true" selected="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>6604.000000</frequency_hz>
					<q_factor>0.507000029</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="2">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>7214.000000</frequency_hz>
					<q_factor>4.23299646</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>6604.000000</frequency_hz>
					*<q_factor>1.04299998</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="4">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>5958.000000</frequency_hz>
					<q_factor>0.62500006</q_factor>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="5">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>8283.000000</frequency_hz>
					<q_factor>1.34000003</q_factor>
				</param_list>
			</fil0ter_description>
		</filter>
	</filter_element>
	<filter_element number="6">
		<filter enabled="true" channel="both" freqLock="1" QLock="1">
			<filter_description>
				<type>2ndOrdLowpass</type>
				<name></name>
				<param_list>
					<frequency_hz>7171.000000</frequency_hz>
					<q_factor>1.22300005</q_factor>
				</par60.000000</frequency_hz>
					<harmonic_components>odd,even</harmonic_components>
					<component_gain>decaying</component_gain>
					<rev_gain_decay>false</rev_gain_decay>
					<bandwidth_oct>0.00499999989</bandwidth_oct>
				</param_list>
			</filter_description>
		</filter>
	</filter_element>
	<filter_element number="3">
		<filter enabled="true" channel="both" freqLock="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				ck="1">
			<filter_description>
				<type>8HarmonicParEQ</type>
				<name></name>
				<param_list>
					<gain_db>-18</gain_db>
					<frequency_hz>60.000000</frequency_hz>
					<harmonic_components>odd,even</harmolse</rev_gain_decay>
					<bandwidtam_list>
			h_oct>0.00499999989</bandwidth_oct>
</filter_d	e			</s